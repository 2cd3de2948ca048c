#pragma once

#include "model/AudioPlugin.h"

#include <QStringList>

namespace orvanlite::platform {
struct SystemLayout;
}

namespace orvanlite {

/// Where bundles live: the folders of every format, and what the position of a bundle says about it. Knows paths
/// only and never asks the disk.
class PluginLocations final {
public:
    explicit PluginLocations(const platform::SystemLayout& layout);

    /// Where hosts look for plugins of the format: the system's folder, then the user's, which is left out without
    /// a home folder. Empty for `wavesBundle`, whose folders carry version numbers: see wavesFolder().
    [[nodiscard]] QStringList systemPaths(PluginFormat format) const;
    /// Every folder whose entries of the format are plugins, at any depth: `systemPaths`, then the folders of
    /// disabled ones. Empty for `wavesBundle`.
    [[nodiscard]] QStringList searchFolders(PluginFormat format) const;

    /// "/Library/Audio/Plug-Ins/Disabled", with one subfolder per format.
    [[nodiscard]] const QString& centralDisabledDirectory() const { return m_centralDisabledDirectory; }
    [[nodiscard]] QString centralDisabledDirectory(PluginFormat format) const;
    /// Folder that the plugin goes to when it is disabled.
    [[nodiscard]] QString disabledFolder(const AudioPlugin& plugin) const;
    /// Whether a bundle found at this path is disabled. Not for Waves bundles.
    [[nodiscard]] bool isDisabled(const QString& path) const;
    /// Where a bundle found at this path belongs when it is enabled. Not for Waves bundles.
    [[nodiscard]] QString originalPath(const QString& path, PluginFormat format) const;

    /// "/Applications/Waves"
    [[nodiscard]] const QString& wavesFolder() const { return m_wavesFolder; }
    /// Whether a folder of this name in the Waves folder holds plugins.
    [[nodiscard]] static bool isWavesVersionFolder(QStringView name);
    /// The version, "V" included, in the name of such a folder.
    [[nodiscard]] static QString wavesVersion(const QString& name);
    /// Whether a folder of this name in the Waves folder holds shells and their registration utility.
    [[nodiscard]] static bool isWavesShellsFolder(QStringView name);
    /// Folder of the disabled plugins of a version folder.
    [[nodiscard]] static QString wavesDisabledFolder(const QString& versionFolder);

    /// The file name extension, without the dot, that makes an entry a plugin of the format.
    [[nodiscard]] static QStringView bundleExtension(PluginFormat format);
    /// Whether a file name is that of a plugin of the format. Letter case counts.
    [[nodiscard]] static bool isPluginOf(PluginFormat format, QStringView fileName);
    /// Whether a plugin of this name holds other plugins, so that disabling it would switch all of them off. It
    /// counts as no plugin.
    [[nodiscard]] static bool isContainer(const QString& name);

private:
    const platform::SystemLayout& m_layout;
    QString m_centralDisabledDirectory;
    QString m_wavesFolder;
};

} // namespace orvanlite
