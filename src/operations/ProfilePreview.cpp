#include "operations/ProfilePreview.h"

#include "profiles/ProfileManager.h"

namespace orvanlite {

using namespace Qt::StringLiterals;

ProfilePreview::ProfilePreview(const CatalogueRows& rows, QObject* context)
    : m_rows(rows)
{
    rows.plugins.observe(context, [this] { m_comparison.pluginsChanged(); });
    const auto dropSlice = [this] { m_agreeingPlugins.reset(); };
    rows.displayedPlugins.observe(context, dropSlice);
    activeProfile.observe(context, dropSlice);
    profileViewFilter.observe(context, [this, dropSlice] {
        dropSlice();
        if (*profileViewFilter == "changes"_L1)
            refreshProfileChanges();
    });
}

bool ProfilePreview::isPreviewing(const QUuid& profileId) const
{
    return isActive() && (*activeProfile)->id == profileId;
}

void ProfilePreview::statusSorted()
{
    if (isActive())
        profileSortMode = (*profileSortMode + 1) % 3;
}

AudioPlugins ProfilePreview::agreeingPlugins(bool enabled) const
{
    const QSet<QString>& inProfile = (*activeProfile)->enabledPlugins;
    AudioPlugins agreeing;
    for (const AudioPlugin& plugin : *m_rows.displayedPlugins) {
        if (plugin.isEnabled == enabled && inProfile.contains(pluginKey(plugin)) == enabled)
            agreeing.push_back(plugin);
    }
    return agreeing;
}

const AudioPlugins& ProfilePreview::filteredPlugins() const
{
    if (!isActive())
        return *m_rows.displayedPlugins;
    if (*profileViewFilter == "changes"_L1)
        return *cachedProfileChanges;
    const bool enabled = *profileViewFilter == "enabled"_L1;
    if (!enabled && *profileViewFilter != "disabled"_L1)
        return *m_rows.displayedPlugins;
    if (!m_agreeingPlugins)
        m_agreeingPlugins = agreeingPlugins(enabled);
    return *m_agreeingPlugins;
}

void ProfilePreview::refreshProfileChanges()
{
    if (isActive())
        cachedProfileChanges = m_comparison.changes(**activeProfile, *m_rows.plugins);
    else
        cachedProfileChanges.clear();
}

ProfileChanges ProfilePreview::profileChanges(const PluginProfile& profile) const
{
    return ProfileManager::computeChanges(profile, *m_rows.plugins);
}

int ProfilePreview::profileChangeCount(const PluginProfile& profile) const
{
    return m_comparison.changeCount(profile, *m_rows.plugins);
}

} // namespace orvanlite
