#pragma once

#include <QString>

namespace orvanlite::platform {

/// Every absolute path that the application uses. A plain value; no other code spells an absolute path.
///
/// In production `root` is empty. Tests and the demo use a temporary folder as root, so they cannot reach the
/// real system folders. Paths built from a layout are real paths on disk.
struct SystemLayout {
    QString root;               ///< empty, or the folder that stands for "/"; no trailing slash
    QString home;               ///< the user's home folder
    QString applicationSupport; ///< the user's application data
    QString configuration;      ///< the user's settings
    QString cache;
    QString runtime;   ///< sockets and lock files of running processes
    QString temporary; ///< scripts that root runs; private, created with the platform services
    QString desktop;
    QString downloads;
    QString documents;
    QString toolOverrides; ///< folder that leads the PATH of scripts; empty in production
    QString rootRunner;    ///< installed program that the password prompt starts; empty for none

    /// The layout of this machine and user.
    [[nodiscard]] static SystemLayout ofThisMachine();

    /// The same layout below `root`, with the home folder `{root}/Users/tester`.
    [[nodiscard]] static SystemLayout sandbox(const QString& root);

    [[nodiscard]] bool isSandbox() const { return !root.isEmpty(); }

    /// Prepends `root` to an absolute path.
    [[nodiscard]] QString system(QStringView absolutePath) const
    {
        return QString(root).append(absolutePath);
    }
    /// Prepends the home folder to an absolute path. Empty for a user without a home folder, where the result
    /// would be the system's path.
    [[nodiscard]] QString inHome(QStringView absolutePath) const
    {
        return home.isEmpty() || home == u"/" ? QString() : QString(home).append(absolutePath);
    }

    /// "/Library/Audio/Plug-Ins/Disabled": one subfolder per format for disabled plugins.
    [[nodiscard]] QString centralDisabledDirectory() const;
    /// "/Library/Application Support/Avid/Audio/Plug-Ins" and its sibling "Plug-Ins (Unused)".
    [[nodiscard]] QString aaxDirectory() const;
    [[nodiscard]] QString aaxUnusedDirectory() const;
    [[nodiscard]] QString aaxUnusedDirectoryOfUser() const; ///< the same below the home folder
    [[nodiscard]] QString wavesDirectory() const;           ///< "/Applications/Waves"
    [[nodiscard]] QString audioPlugInsDirectory() const;    ///< "/Library/Audio/Plug-Ins"
    /// "/Applications/Universal Audio/UAD Meter & Control Panel.app"
    [[nodiscard]] QString uadControlPanel() const;
    /// Whether the path starts with "/Library" as plain text.
    [[nodiscard]] bool isInSystemLibrary(const QString& path) const;

    /// {Application Support}/Orvanlite: the catalogue and all state files.
    [[nodiscard]] QString applicationFolder() const;

    /// "/Library/Caches/com.apple.audiounits.cache"
    [[nodiscard]] QString audioUnitSystemCache() const;
    [[nodiscard]] QString machineIdFile() const; ///< "/etc/machine-id"

    /// Absolute paths of external programs.
    [[nodiscard]] QString shell() const;    ///< "/bin/sh"
    [[nodiscard]] QString openTool() const; ///< "/usr/bin/open"
    [[nodiscard]] QString chflags() const;  ///< "/bin/chflags"

    bool operator==(const SystemLayout&) const = default;
};

} // namespace orvanlite::platform
