#pragma once

#include "model/AudioPlugin.h"
#include "model/Observable.h"
#include "profiles/PluginProfile.h"

namespace orvanlite::platform {
struct Platform;
}

namespace orvanlite {

/// What applying a profile would move, each list in the order of the plugins that it was computed from.
struct ProfileChanges {
    AudioPlugins toEnable;  ///< disabled now
    AudioPlugins toDisable; ///< enabled now

    bool operator==(const ProfileChanges&) const = default;
};

/// The profiles of the user, kept in "profiles.json", and the plugins that wait for the user's decision, kept in
/// "pending_new_plugins.json". The files are read once.
///
/// Errors:  a missing, unreadable or invalid file reads as empty; a failed write leaves the values as they are. Only
///          importProfile() throws.
/// Effects: every change assigns once and then rewrites its whole file in place.
class ProfileManager final {
public:
    /// Makes the folder and loads both files.
    explicit ProfileManager(const platform::Platform& platform);
    ProfileManager(const ProfileManager&) = delete;
    ProfileManager& operator=(const ProfileManager&) = delete;

    /// In the order of their making; never sorted.
    Observable<PluginProfiles> profiles;
    /// Keys of newly installed plugins that the user has neither added nor dismissed.
    Observable<QSet<QString>> pendingNewPluginKeys;

    /// A profile of the state as it is. `plugins` is the whole catalogue.
    void saveProfile(const QString& name, const AudioPlugins& plugins);
    /// A profile in which exactly the selected plugins are on, whatever their state is.
    void saveProfileFromSelection(const QString& name, const AudioPlugins& selectedPlugins,
                                  const AudioPlugins& allPlugins);
    /// Gives the stored profile of this id the state as it is; id, name, date and place stay. An unknown id changes
    /// and writes nothing.
    void updateProfile(const PluginProfile& profile, const AudioPlugins& plugins);
    void deleteProfile(const PluginProfile& profile);
    /// Reads a document and appends its profile under a new id.
    /// Errors: FileError or JsonError; nothing has changed then.
    void importProfile(const QString& path);

    /// Only `enabledPlugins` counts: a plugin that the profile has never heard of is off in it, and a key without a
    /// plugin gives nothing.
    [[nodiscard]] static ProfileChanges computeChanges(const PluginProfile& profile,
                                                       const AudioPlugins& currentPlugins);

    void setPendingNewPlugins(const AudioPlugins& plugins);
    /// Forgets the pending keys and removes their file.
    void clearPendingNewPlugins();
    /// Those of the plugins that are pending, in their order.
    [[nodiscard]] AudioPlugins pendingNewPluginsFrom(const AudioPlugins& plugins) const;
    /// Makes the plugins known to the profiles, and with `asEnabled` turns them on there. Turns nothing off.
    void addPluginsToProfiles(const AudioPlugins& plugins, const QSet<QUuid>& profileIds, bool asEnabled);
    /// Makes the plugins known to every profile without turning them on.
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

/// What a profile's row says of the number of changes that applying it would make.
[[nodiscard]] QString profileStatusText(qsizetype changes);
/// The question before a profile is applied.
[[nodiscard]] QString applyQuestion(const QString& name, const ProfileChanges& changes);

/// The name as it is stored: without blanks and tabs at its ends. Line breaks stay.
[[nodiscard]] QString trimmedProfileName(const QString& entered);

} // namespace orvanlite
