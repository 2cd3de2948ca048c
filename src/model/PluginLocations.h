#pragma once

#include "model/AudioPlugin.h"

#include <QStringList>

namespace orvanlite::platform {
struct SystemLayout;
}

namespace orvanlite {

/// The folders of every format, and what a bundle's path says about its state. Works on paths only, without
/// file access.
class PluginLocations final {
public:
    explicit PluginLocations(const platform::SystemLayout& layout);

    /// Where hosts look for plugins of the format: the system folder, then the user's if there is a home
    /// folder. Empty for `wavesBundle`, whose folders have version numbers: see wavesFolder().
    [[nodiscard]] QStringList systemPaths(PluginFormat format) const;
    /// Every folder to search recursively for the format: `systemPaths`, then those of disabled plugins.
    /// Empty for `wavesBundle`.
    [[nodiscard]] QStringList searchFolders(PluginFormat format) const;

    /// "/Library/Audio/Plug-Ins/Disabled", with one subfolder per format.
    [[nodiscard]] const QString& centralDisabledDirectory() const { return m_centralDisabledDirectory; }
    [[nodiscard]] QString centralDisabledDirectory(PluginFormat format) const;
    /// Folder that the plugin is moved to when it is disabled.
    [[nodiscard]] QString disabledFolder(const AudioPlugin& plugin) const;
    /// Whether a bundle found at this path is disabled. Not for Waves bundles.
    [[nodiscard]] bool isDisabled(const QString& path) const;
    /// Path of the bundle when it is enabled. Not for Waves bundles.
    [[nodiscard]] QString originalPath(const QString& path, PluginFormat format) const;

    /// "/Applications/Waves"
    [[nodiscard]] const QString& wavesFolder() const { return m_wavesFolder; }
    /// Whether a folder with this name in the Waves folder holds plugins.
    [[nodiscard]] static bool isWavesVersionFolder(QStringView name);
    /// The version in such a name, including the "V".
    [[nodiscard]] static QString wavesVersion(const QString& name);
    /// Whether a folder with this name in the Waves folder holds shells and their registration utility.
    [[nodiscard]] static bool isWavesShellsFolder(QStringView name);
    /// A version folder's subfolder for disabled plugins.
    [[nodiscard]] static QString wavesDisabledFolder(const QString& versionFolder);

    /// File name extension of the format's plugins, without the dot.
    [[nodiscard]] static QStringView bundleExtension(PluginFormat format);
    /// Whether a file name has the format's extension. Case-sensitive.
    [[nodiscard]] static bool isPluginOf(PluginFormat format, QStringView fileName);
    /// Whether the name is that of a container of other plugins. Disabling it would disable all of them, so
    /// it is not treated as a plugin.
    [[nodiscard]] static bool isContainer(const QString& name);

private:
    const platform::SystemLayout& m_layout;
    QString m_centralDisabledDirectory;
    QString m_wavesFolder;
};

} // namespace orvanlite
