#pragma once

#include "model/AudioPlugin.h"
#include "profiles/PluginProfile.h"

#include <QHash>

#include <optional>

namespace orvanlite {

/// Compares many profiles with one long list of plugins, fast enough for every redraw of the profiles' rows.
///
/// Each key gets a number, and each profile's state of a key is looked up once. After plugins change state, a
/// profile needs one pass over numbers, without hashing or comparing texts.
class ProfileComparison {
public:
    /// Must be called after every change of the plugins.
    void pluginsChanged();

    /// Number of plugins that the profile would move.
    [[nodiscard]] int changeCount(const PluginProfile& profile, const AudioPlugins& plugins);
    /// The plugins that the profile would move, in input order.
    [[nodiscard]] AudioPlugins changes(const PluginProfile& profile, const AudioPlugins& plugins);

private:
    struct KnownProfile {
        QSet<QString> enabledPlugins; ///< implicitly shared with the profile, so comparing is cheap
        std::vector<char> isOn;       ///< by key number
        std::optional<int> changes;
    };
    KnownProfile& known(const PluginProfile& profile, const AudioPlugins& plugins);
    void numberPlugins(const AudioPlugins& plugins);

    QHash<QString, std::size_t> m_numbers;
    std::vector<QString> m_keys;                             ///< by number
    std::optional<std::vector<std::size_t>> m_pluginNumbers; ///< key numbers in plugin order
    QHash<QUuid, KnownProfile> m_profiles;                   ///< by id
};

} // namespace orvanlite
