#pragma once

#include "model/AudioPlugin.h"

#include <QSet>

#include <optional>

namespace orvanlite {

class ProfileManager;

/// State of the banner and the sheet for newly installed plugins. A value: the view owns it, forwards clicks
/// to it and redraws.
struct NewPlugins {
    AudioPlugins detectedNewPlugins;
    QSet<QUuid> selectedProfilesForNewPlugins;
    QSet<QUuid> selectedNewPluginIds;
    QSet<PluginFormat> selectedNewPluginFormats; ///< chips that are on

    /// Updates paths and states: the plugins may have been toggled since the scan that found them. Ids and
    /// selections stay, even after another scan.
    void updateStates(const AudioPlugins& plugins);

    /// Ascending by raw value.
    [[nodiscard]] std::vector<PluginFormat> detectedFormats() const;
    [[nodiscard]] qsizetype count(PluginFormat format) const;
    /// In list order.
    [[nodiscard]] AudioPlugins selectedNewPlugins() const;

    /// Selects or deselects all plugins of the format together with its chip.
    void toggleFormat(PluginFormat format);
    /// The chip goes off with the last selected plugin of its format, and on only when all are selected.
    void togglePlugin(const AudioPlugin& plugin);
    void toggleProfile(const QUuid& id);
    /// "Deselect All" when all profiles are selected, otherwise "Select All".
    void toggleAllProfiles(const ProfileManager& manager);
    [[nodiscard]] bool hasAllProfiles(const ProfileManager& manager) const;
    /// Whether at least one plugin and one profile are selected.
    [[nodiscard]] bool canAdd() const;

    [[nodiscard]] QString bannerText() const;                  ///< "4 new plugins detected: A, B, C +1 more"
    [[nodiscard]] QString explanation() const;                 ///< "These 4 plugins were just installed ..."
    [[nodiscard]] QString selectionText() const;               ///< "3 of 4 plugins selected"
    [[nodiscard]] QString addButtonText() const;               ///< "Add 3 to Profiles"
    [[nodiscard]] QString chipText(PluginFormat format) const; ///< "VST3 (2)"

    /// Adds the selected plugins to the selected profiles in their current state, and the others to all
    /// profiles as disabled. Nothing is pending afterwards.
    void addToProfiles(ProfileManager& manager) const;
    /// Adds all to all profiles as disabled ("Skip" and dismissing the banner). Nothing is pending
    /// afterwards.
    void dismiss(ProfileManager& manager) const;
};

/// Called after the start-up scan: adds its new plugins to those pending from earlier runs and selects them
/// all. Nothing when there is nothing to show. Without profiles nothing is stored, as there is nothing to
/// update.
[[nodiscard]] std::optional<NewPlugins> collectNewPlugins(ProfileManager& manager,
                                                          const AudioPlugins& newlyDetectedPlugins,
                                                          const AudioPlugins& plugins);

} // namespace orvanlite
