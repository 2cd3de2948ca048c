#pragma once

#include "model/AudioPlugin.h"

namespace orvanlite::platform {
class FileManager;
}

namespace orvanlite {

class PluginLocations;

/// The plugins in the version folders "Plug-Ins V{number}" of the Waves folder and in the "Disabled"
/// subfolder of each. Bundles are not opened.
///
/// Shape:  by version folder, enabled plugins first, each in listing order. A plugin in two versions gives
///         two records with the same key.
/// Errors: none. A folder that cannot be listed is skipped.
[[nodiscard]] AudioPlugins scanWavesBundlePlugins(const platform::FileManager& files,
                                                  const PluginLocations& locations);

} // namespace orvanlite
