#pragma once

#include "model/AudioPlugin.h"
#include "profiles/PluginProfile.h"

#include <QHash>

#include <optional>

namespace orvanlite {

/// Compares many profiles with one long list of plugins, at every redraw of their rows.
///
/// Every key gets a number once. What a profile says of a key is asked for once per profile and number, so that a
/// change of the plugins' states costs each profile one pass over numbers, and no text is hashed or compared.
class ProfileComparison {
public:
    /// To be called after every change of the plugins.
    void pluginsChanged();

    /// How many plugins the profile would move.
    [[nodiscard]] int changeCount(const PluginProfile& profile, const AudioPlugins& plugins);
    /// These, in the order of the plugins.
    [[nodiscard]] AudioPlugins changes(const PluginProfile& profile, const AudioPlugins& plugins);

private:
    struct KnownProfile {
        QSet<QString> enabledPlugins; ///< shared with the profile: the same at one glance
        std::vector<char> isOn;       ///< by the number of the key
        std::optional<int> changes;
    };
    KnownProfile& known(const PluginProfile& profile, const AudioPlugins& plugins);
    void numberPlugins(const AudioPlugins& plugins);

    QHash<QString, std::size_t> m_numbers;
    std::vector<QString> m_keys;                             ///< by number
    std::optional<std::vector<std::size_t>> m_pluginNumbers; ///< of the plugins, in their order
    QHash<QUuid, KnownProfile> m_profiles;                   ///< by id
};

} // namespace orvanlite
