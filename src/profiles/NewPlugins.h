#pragma once

#include "model/AudioPlugin.h"

#include <QSet>

#include <optional>

namespace orvanlite {

class ProfileManager;

/// What the banner and the sheet around newly installed plugins show and tick. A value: the view keeps it, passes
/// clicks on to it and draws it anew.
struct NewPlugins {
    AudioPlugins detectedNewPlugins;
    QSet<QUuid> selectedProfilesForNewPlugins;
    QSet<QUuid> selectedNewPluginIds;
    QSet<PluginFormat> selectedNewPluginFormats; ///< chips that are on

    /// Takes over where the plugins are now: they may have been toggled since the scan that found them. Their ids and
    /// ticks stay, also after another scan.
    void updateStates(const AudioPlugins& plugins);

    /// Ascending by raw value.
    [[nodiscard]] std::vector<PluginFormat> detectedFormats() const;
    [[nodiscard]] qsizetype count(PluginFormat format) const;
    /// Those with a tick, in list order.
    [[nodiscard]] AudioPlugins selectedNewPlugins() const;

    /// Ticks or unticks all plugins of the format with its chip.
    void toggleFormat(PluginFormat format);
    /// A chip goes off with the last tick of its format, and on only with a tick on all of them.
    void togglePlugin(const AudioPlugin& plugin);
    void toggleProfile(const QUuid& id);
    /// "Deselect All" when all profiles are ticked, otherwise "Select All".
    void toggleAllProfiles(const ProfileManager& manager);
    [[nodiscard]] bool hasAllProfiles(const ProfileManager& manager) const;
    /// Whether there is both a plugin and a profile with a tick.
    [[nodiscard]] bool canAdd() const;

    [[nodiscard]] QString bannerText() const;                  ///< "4 new plugins detected: A, B, C +1 more"
    [[nodiscard]] QString explanation() const;                 ///< "These 4 plugins were just installed ..."
    [[nodiscard]] QString selectionText() const;               ///< "3 of 4 plugins selected"
    [[nodiscard]] QString addButtonText() const;               ///< "Add 3 to Profiles"
    [[nodiscard]] QString chipText(PluginFormat format) const; ///< "VST3 (2)"

    /// Adds what is ticked to the ticked profiles, in its present state; the rest is known to all profiles as off.
    /// Nothing is pending afterwards.
    void addToProfiles(ProfileManager& manager) const;
    /// All are known to all profiles as off ("Skip" and the banner's dismissal). Nothing is pending afterwards.
    void dismiss(ProfileManager& manager) const;
};

/// After the scan at start-up: what the scan has found joins what is pending from earlier runs, and all of it is
/// ticked. Nothing when there is nothing to show; without a profile there is nothing to protect, and nothing is kept.
[[nodiscard]] std::optional<NewPlugins> collectNewPlugins(ProfileManager& manager,
                                                          const AudioPlugins& newlyDetectedPlugins,
                                                          const AudioPlugins& plugins);

} // namespace orvanlite
