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

/// Finds every plugin on the machine, enabled or not, from its place on disk and the files beside it. No
/// plugin code is ever loaded. A scan is always complete; nothing of an earlier one is reused.
///
/// Errors: none. What cannot be read is not in the result, and a line on standard output says so.
class PluginScanner final {
public:
    /// Makes sure that the folders of disabled plugins exist and are hidden.
    explicit PluginScanner(const platform::Platform& platform);
    PluginScanner(const PluginScanner&) = delete;
    PluginScanner& operator=(const PluginScanner&) = delete;

    /// Result of the last scan, sorted by name.
    Observable<AudioPlugins> discoveredPlugins;
    Observable<bool> isScanning{false};
    Observable<double> scanProgress{0}; ///< 0 to 1, in six equal steps by format
    /// Cleared at every scan and never set.
    Observable<std::optional<PluginError>> scanError;

    QCoro::Task<> scanAllPlugins();

private:
    void createCentralDisabledDirectoryIfNeeded();
    [[nodiscard]] AudioPlugins scanPluginsForFormat(PluginFormat format) const;
    /// An absent folder gives an empty list.
    [[nodiscard]] AudioPlugins scanDirectory(const QString& path, PluginFormat format) const;
    /// Appends every plugin of the format at any depth, except within plugins.
    void recursivelyScanDirectory(const QString& path, PluginFormat format, AudioPlugins& plugins) const;
    /// Nothing for a container of other plugins, whose removal would switch all of them off.
    [[nodiscard]] std::optional<AudioPlugin> createPluginFromURL(const QString& path, const QString& fileName,
                                                                 PluginFormat format) const;

    const PluginLocations m_locations;
    platform::FileManager& m_files;
};

} // namespace orvanlite
