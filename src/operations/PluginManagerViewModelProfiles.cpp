#include "operations/PluginManagerViewModel.h"

#include "profiles/ProfileManager.h"

namespace orvanlite {

using namespace Qt::StringLiterals;

void PluginManagerViewModel::sortChanged()
{
    if (!sortOrder->empty() && sortOrder->front().key == PluginSortKey::statusValue)
        statusSorted();
    refreshFromDatabase();
    if (isActive())
        refreshProfileChanges();
}

void PluginManagerViewModel::previewProfile(const PluginProfile& profile)
{
    if (isPreviewing(profile.id)) {
        closeProfilePreview();
        return;
    }
    activeProfile = profile;
    profileViewFilter = u"changes"_s;
    clearSelection();
    selectedFormats.clear();       // reloads
    selectedManufacturers.clear(); // reloads
    // On purpose: keeps the search text.
    showAllPlugins = true;
    refreshProfileChanges();
}

void PluginManagerViewModel::closeProfilePreview()
{
    // On purpose: keeps the view filter and the changes until the next preview.
    activeProfile.clear();
    showAllPlugins = false;
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
    if (isPreviewing(profile.id)) {
        // Otherwise the preview would compare with the old state.
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
    if (isPreviewing(profile.id))
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
