#pragma once

#include <QString>

namespace orvanlite::platform {

/// Every absolute path that the system knows. A plain value; nothing else spells an absolute path.
///
/// In production `root` is empty. Tests and the demo use a layout whose root is a temporary folder, so that they
/// can never reach the folders of the real system. Paths built from a layout are real paths on disk.
struct SystemLayout {
    QString root;               ///< empty, or the folder that stands for "/"; no trailing slash
    QString home;               ///< the user's home folder
    QString applicationSupport; ///< where applications of this user keep their data
    QString configuration;      ///< where settings of this user lie
    QString cache;
    QString runtime; ///< sockets and marks of running processes
    QString
        temporary; ///< for scripts that root runs, private to the user; made when the platform services are
    QString desktop;
    QString downloads;
    QString documents;
    QString toolOverrides; ///< folder of stand-ins that leads the search path of scripts; empty in production
    QString rootRunner; ///< where a package puts the program that the password prompt starts; empty for none

    /// The layout of this machine for this user.
    [[nodiscard]] static SystemLayout ofThisMachine();

    /// The same shape below a root of its own, with the home folder `{root}/Users/tester`.
    [[nodiscard]] static SystemLayout sandbox(const QString& root);

    [[nodiscard]] bool isSandbox() const { return !root.isEmpty(); }

    /// `root` in front of an absolute path of the system.
    [[nodiscard]] QString system(QStringView absolutePath) const
    {
        return QString(root).append(absolutePath);
    }
    /// The home folder in front of an absolute path of the system; empty for a user without a home folder of
    /// their own, which would make it the system's path.
    [[nodiscard]] QString inHome(QStringView absolutePath) const
    {
        return home.isEmpty() || home == u"/" ? QString() : QString(home).append(absolutePath);
    }

    /// "/Library/Audio/Plug-Ins/Disabled": one subfolder per format for what is switched off.
    [[nodiscard]] QString centralDisabledDirectory() const;
    /// "/Library/Application Support/Avid/Audio/Plug-Ins" and its neighbour "Plug-Ins (Unused)".
    [[nodiscard]] QString aaxDirectory() const;
    [[nodiscard]] QString aaxUnusedDirectory() const;
    [[nodiscard]] QString aaxUnusedDirectoryOfUser() const; ///< the same below the home folder
    [[nodiscard]] QString wavesDirectory() const;           ///< "/Applications/Waves"
    [[nodiscard]] QString audioPlugInsDirectory() const;    ///< "/Library/Audio/Plug-Ins"
    /// "/Applications/Universal Audio/UAD Meter & Control Panel.app"
    [[nodiscard]] QString uadControlPanel() const;
    /// Whether the path begins with the text "/Library", the system's library.
    [[nodiscard]] bool isInSystemLibrary(const QString& path) const;

    /// {Application Support}/Orvanlite: the catalogue and all state files.
    [[nodiscard]] QString applicationFolder() const;

    /// "/Library/Caches/com.apple.audiounits.cache"
    [[nodiscard]] QString audioUnitSystemCache() const;
    [[nodiscard]] QString machineIdFile() const; ///< "/etc/machine-id"

    /// Programs that are started, as absolute paths.
    [[nodiscard]] QString shell() const;    ///< "/bin/sh"
    [[nodiscard]] QString openTool() const; ///< "/usr/bin/open"
    [[nodiscard]] QString chflags() const;  ///< "/bin/chflags"

    bool operator==(const SystemLayout&) const = default;
};

} // namespace orvanlite::platform
