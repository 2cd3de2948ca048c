#include "operations/PluginManagerViewModel.h"

#include "profiles/ProfileManager.h"

namespace orvanlite {

using namespace Qt::StringLiterals;

void PluginManagerViewModel::connectProfileObservers()
{
    plugins.observe(this, [this] { m_comparison.pluginsChanged(); });
    const auto dropSlice = [this] { m_agreeingPlugins.reset(); };
    displayedPlugins.observe(this, dropSlice);
    activeProfile.observe(this, dropSlice);
    profileViewFilter.observe(this, [this, dropSlice] {
        dropSlice();
        if (*profileViewFilter == "changes"_L1)
            refreshProfileChanges();
    });
}

AudioPlugins PluginManagerViewModel::agreeingPlugins(bool enabled) const
{
    const QSet<QString>& inProfile = (*activeProfile)->enabledPlugins;
    AudioPlugins agreeing;
    for (const AudioPlugin& plugin : *displayedPlugins) {
        if (plugin.isEnabled == enabled && inProfile.contains(pluginKey(plugin)) == enabled)
            agreeing.push_back(plugin);
    }
    return agreeing;
}

const AudioPlugins& PluginManagerViewModel::filteredPlugins() const
{
    if (!activeProfile->has_value())
        return *displayedPlugins;
    if (*profileViewFilter == "changes"_L1)
        return *cachedProfileChanges;
    const bool enabled = *profileViewFilter == "enabled"_L1;
    if (!enabled && *profileViewFilter != "disabled"_L1)
        return *displayedPlugins;
    if (!m_agreeingPlugins)
        m_agreeingPlugins = agreeingPlugins(enabled);
    return *m_agreeingPlugins;
}

void PluginManagerViewModel::sortChanged()
{
    if (activeProfile->has_value() && !sortOrder->empty() &&
        sortOrder->front().key == PluginSortKey::statusValue)
        profileSortMode = (*profileSortMode + 1) % 3;
    refreshFromDatabase();
    if (activeProfile->has_value())
        refreshProfileChanges();
}

void PluginManagerViewModel::previewProfile(const PluginProfile& profile)
{
    if (activeProfile->has_value() && (*activeProfile)->id == profile.id) {
        closeProfilePreview();
        return;
    }
    activeProfile = profile;
    profileViewFilter = u"changes"_s;
    clearSelection();
    selectedFormats.clear();       // reloads
    selectedManufacturers.clear(); // reloads
    // On purpose: the search text stays.
    showAllPlugins = true;
    refreshProfileChanges();
}

void PluginManagerViewModel::closeProfilePreview()
{
    // On purpose: the slice and the changes stay as they are until the next preview.
    activeProfile.clear();
    showAllPlugins = false;
}

void PluginManagerViewModel::refreshProfileChanges()
{
    if (!activeProfile->has_value()) {
        cachedProfileChanges.clear();
        return;
    }
    cachedProfileChanges = m_comparison.changes(**activeProfile, *plugins);
}

ProfileChanges PluginManagerViewModel::profileChanges(const PluginProfile& profile) const
{
    return ProfileManager::computeChanges(profile, *plugins);
}

int PluginManagerViewModel::profileChangeCount(const PluginProfile& profile) const
{
    return m_comparison.changeCount(profile, *plugins);
}

QCoro::Task<> PluginManagerViewModel::applyProfile(PluginProfile profile)
{
    ProfileChanges changes = profileChanges(profile);
    AudioPlugins all = std::move(changes.toEnable);
    all.insert(all.end(), std::make_move_iterator(changes.toDisable.begin()),
               std::make_move_iterator(changes.toDisable.end()));
    if (all.empty())
        co_return;
    co_await toggleMultiplePlugins(std::move(all));
}

void PluginManagerViewModel::updateProfile(ProfileManager& manager, PluginProfile profile)
{
    manager.updateProfile(profile, *plugins);
    if (activeProfile->has_value() && (*activeProfile)->id == profile.id) {
        // The preview would compare with the old state otherwise.
        std::optional<PluginProfile> stored;
        for (const PluginProfile& each : *manager.profiles) {
            if (!stored && each.id == profile.id)
                stored = each;
        }
        activeProfile = std::move(stored);
    }
    refreshAllState();
}

void PluginManagerViewModel::deleteProfile(ProfileManager& manager, PluginProfile profile)
{
    if (activeProfile->has_value() && (*activeProfile)->id == profile.id)
        closeProfilePreview();
    manager.deleteProfile(profile);
    refreshAllState();
}

bool PluginManagerViewModel::saveProfile(ProfileManager& manager, const QString& enteredName) const
{
    const QString name = trimmedProfileName(enteredName);
    if (name.isEmpty())
        return false;
    manager.saveProfile(name, *plugins);
    return true;
}

bool PluginManagerViewModel::saveProfileFromSelection(ProfileManager& manager,
                                                      const QString& enteredName) const
{
    const QString name = trimmedProfileName(enteredName);
    if (name.isEmpty())
        return false;
    manager.saveProfileFromSelection(name, selectedRecords(), *plugins);
    return true;
}

} // namespace orvanlite
