#pragma once

#include "model/AudioPlugin.h"
#include "model/Observable.h"
#include "profiles/PluginProfile.h"

namespace orvanlite::platform {
struct Platform;
}

namespace orvanlite {

/// The plugins that applying a profile would move, each list in the order of its input.
struct ProfileChanges {
    AudioPlugins toEnable;  ///< disabled now
    AudioPlugins toDisable; ///< enabled now

    bool operator==(const ProfileChanges&) const = default;
};

/// The user's profiles, stored in "profiles.json", and new plugins that await the user's decision, stored in
/// "pending_new_plugins.json". The files are read once.
///
/// Errors:  a missing, unreadable or invalid file reads as empty; a failed write keeps the values in memory.
///          Only importProfile() throws.
/// Effects: every change notifies once and then rewrites its whole file in place.
class ProfileManager final {
public:
    /// Creates the folder and loads both files.
    explicit ProfileManager(const platform::Platform& platform);
    ProfileManager(const ProfileManager&) = delete;
    ProfileManager& operator=(const ProfileManager&) = delete;

    /// In order of creation; never sorted.
    Observable<PluginProfiles> profiles;
    /// Keys of newly installed plugins that the user has neither added nor dismissed.
    Observable<QSet<QString>> pendingNewPluginKeys;

    /// Saves the current state as a new profile. `plugins` is the whole catalogue.
    void saveProfile(const QString& name, const AudioPlugins& plugins);
    /// Saves a new profile in which exactly the selected plugins are enabled, regardless of their current
    /// state.
    void saveProfileFromSelection(const QString& name, const AudioPlugins& selectedPlugins,
                                  const AudioPlugins& allPlugins);
    /// Replaces the stored profile with this id by `profile` with the current state; its position stays. No
    /// effect for an unknown id.
    void updateProfile(const PluginProfile& profile, const AudioPlugins& plugins);
    void deleteProfile(const PluginProfile& profile);
    /// Reads a document and appends its profile with a new id.
    /// Errors: FileError or JsonError, without any change.
    void importProfile(const QString& path);

    /// Only `enabledPlugins` counts: plugins unknown to the profile are to be disabled, and keys without a
    /// plugin are ignored.
    [[nodiscard]] static ProfileChanges computeChanges(const PluginProfile& profile,
                                                       const AudioPlugins& currentPlugins);

    void setPendingNewPlugins(const AudioPlugins& plugins);
    /// Clears the pending keys and removes their file.
    void clearPendingNewPlugins();
    /// The pending ones among the plugins, in input order.
    [[nodiscard]] AudioPlugins pendingNewPluginsFrom(const AudioPlugins& plugins) const;
    /// Adds the plugins to the profiles' known plugins and, with `asEnabled`, enables them there. Disables
    /// none.
    void addPluginsToProfiles(const AudioPlugins& plugins, const QSet<QUuid>& profileIds, bool asEnabled);
    /// Adds the plugins to the known plugins of every profile without enabling them.
    void dismissNewPlugins(const AudioPlugins& plugins);

    [[nodiscard]] QSet<QUuid> profileIds() const;

private:
    void append(const QString& name, const AudioPlugins& on, const AudioPlugins& all);
    void saveProfiles() const;
    void write(const QString& path, const QByteArray& content) const;

    const platform::Platform& m_platform;
    QString m_profilesPath;
    QString m_pendingPluginsPath;
};

/// Status line of a profile's row, from the number of changes needed to apply it.
[[nodiscard]] QString profileStatusText(qsizetype changes);
/// Confirmation text before a profile is applied.
[[nodiscard]] QString applyQuestion(const QString& name, const ProfileChanges& changes);

/// The name as stored: without leading and trailing spaces and tabs. Line breaks stay.
[[nodiscard]] QString trimmedProfileName(const QString& entered);

} // namespace orvanlite
