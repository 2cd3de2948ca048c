#pragma once

#include "model/AudioPlugin.h"
#include "model/Observable.h"
#include "model/PluginError.h"
#include "model/PluginLocations.h"

#include <qcorotask.h>

#include <optional>

namespace orvanlite::platform {
class FileManager;
struct Platform;
} // namespace orvanlite::platform

namespace orvanlite {

/// Finds every plugin on the machine, enabled or not, by its path and metadata files. No plugin code is
/// loaded. Every scan is complete; nothing is reused from an earlier one.
///
/// Errors: none. A folder that cannot be read is reported on standard output and left out.
class PluginScanner final {
public:
    /// Creates the folders of disabled plugins and hides their parent.
    explicit PluginScanner(const platform::Platform& platform);
    PluginScanner(const PluginScanner&) = delete;
    PluginScanner& operator=(const PluginScanner&) = delete;

    /// Result of the last scan, sorted by name.
    Observable<AudioPlugins> discoveredPlugins;
    Observable<bool> isScanning{false};
    Observable<double> scanProgress{0}; ///< 0 to 1, in six equal steps by format
    /// Cleared by every scan and never set.
    Observable<std::optional<PluginError>> scanError;

    QCoro::Task<> scanAllPlugins();

private:
    void createCentralDisabledDirectoryIfNeeded();
    [[nodiscard]] AudioPlugins scanPluginsForFormat(PluginFormat format) const;
    /// Appends what recursivelyScanDirectory() finds; nothing for a missing folder.
    void scanDirectory(const QString& path, PluginFormat format, AudioPlugins& plugins) const;
    /// Appends every plugin of the format at any depth, except inside other plugins. Only what the path tells
    /// is filled in.
    void recursivelyScanDirectory(const QString& path, PluginFormat format, AudioPlugins& plugins) const;
    /// Nothing for a container of other plugins; see PluginLocations::isContainer().
    [[nodiscard]] std::optional<AudioPlugin> createPluginFromURL(const QString& path, const QString& fileName,
                                                                 PluginFormat format) const;

    const PluginLocations m_locations;
    platform::FileManager& m_files;
};

} // namespace orvanlite
