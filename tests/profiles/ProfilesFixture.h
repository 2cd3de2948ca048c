#pragma once

#include "model/AudioPlugin.h"
#include "model/TextOrder.h"
#include "model/Uuid.h"
#include "profiles/ProfileManager.h"
#include "support/Fakes.h"

namespace orvanlite::test {

[[nodiscard]] inline AudioPlugin plugin(const QString& name, bool isEnabled,
                                        PluginFormat format = PluginFormat::vst3)
{
    return {makeUuid(), name, {}, format, {}, {}, isEnabled, {}, {}, {}};
}

/// "{name}: {on} / {count} {known}" of every profile.
[[nodiscard]] inline QStringList summary(const ProfileManager& manager)
{
    const auto joined = [](const QSet<QString>& keys) { return plainSorted(keys).join(u','); };
    QStringList all;
    for (const PluginProfile& each : *manager.profiles)
        all.append(each.name + u": "_s + joined(each.enabledPlugins) + u" / "_s +
                   QString::number(each.totalPluginCount) + u' ' + joined(each.allPluginKeys));
    return all;
}

class ProfilesTest : public testing::Test {
protected:
    inline static const QByteArray kObject =
        R"({"id":"0F1E2D3C-0000-4000-8000-000000000001","name":"P","createdAt":721692800.25,)"
        R"("enabledPlugins":["A|VST3"],"totalPluginCount":2,"allPluginKeys":["A|VST3","B\/ü|Waves"]})";

    ProfilesTest() { m_system.clock.setNow(1'700'000'000.25); }

    TestPlatform m_system;
    /// Relative to the root.
    const QString m_folder = m_system.layout.applicationFolder().mid(m_system.root.path().size());
    const QString m_profiles = m_folder + u"/profiles.json"_s;
    const QString m_pending = m_folder + u"/pending_new_plugins.json"_s;
};

} // namespace orvanlite::test
