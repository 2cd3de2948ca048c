#include "operations/ProfileComparison.h"

namespace orvanlite {

void ProfileComparison::pluginsChanged()
{
    m_pluginNumbers.reset();
    for (KnownProfile& profile : m_profiles)
        profile.changes.reset();
}

void ProfileComparison::numberPlugins(const AudioPlugins& plugins)
{
    if (m_pluginNumbers)
        return;
    // Keys of removed plugins are kept until they outnumber the others.
    if (m_keys.size() > 2 * plugins.size() + 1000) {
        m_keys.clear();
        m_numbers.clear();
        m_profiles.clear();
    }
    std::vector<std::size_t> numbers;
    numbers.reserve(plugins.size());
    for (const AudioPlugin& plugin : plugins) {
        QString key = pluginKey(plugin);
        const auto found = m_numbers.constFind(key);
        if (found != m_numbers.cend()) {
            numbers.push_back(*found);
            continue;
        }
        numbers.push_back(m_keys.size());
        m_numbers.insert(key, m_keys.size());
        m_keys.push_back(std::move(key));
    }
    m_pluginNumbers = std::move(numbers);
}

ProfileComparison::KnownProfile& ProfileComparison::known(const PluginProfile& profile,
                                                          const AudioPlugins& plugins)
{
    numberPlugins(plugins);
    KnownProfile& found = m_profiles[profile.id];
    if (found.enabledPlugins != profile.enabledPlugins)
        found = {profile.enabledPlugins, {}, {}};
    found.isOn.reserve(m_keys.size());
    while (found.isOn.size() < m_keys.size())
        found.isOn.push_back(profile.enabledPlugins.contains(m_keys[found.isOn.size()]) ? 1 : 0);
    return found;
}

int ProfileComparison::changeCount(const PluginProfile& profile, const AudioPlugins& plugins)
{
    KnownProfile& compared = known(profile, plugins);
    if (!compared.changes) {
        int count = 0;
        for (std::size_t i = 0; i < plugins.size(); ++i)
            count += (compared.isOn[(*m_pluginNumbers)[i]] != 0) != plugins[i].isEnabled ? 1 : 0;
        compared.changes = count;
    }
    return *compared.changes;
}

AudioPlugins ProfileComparison::changes(const PluginProfile& profile, const AudioPlugins& plugins)
{
    const KnownProfile& compared = known(profile, plugins);
    AudioPlugins changed;
    for (std::size_t i = 0; i < plugins.size(); ++i) {
        if ((compared.isOn[(*m_pluginNumbers)[i]] != 0) != plugins[i].isEnabled)
            changed.push_back(plugins[i]);
    }
    return changed;
}

} // namespace orvanlite
