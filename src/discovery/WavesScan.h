#pragma once

#include "model/AudioPlugin.h"

namespace orvanlite::platform {
class FileManager;
}

namespace orvanlite {

class PluginLocations;

/// The plugins in the versioned folders "Plug-Ins V{number}" of the Waves folder and in the folder "Disabled"
/// of each. Nothing of a bundle itself is read.
///
/// Shape:  by version folder and within it the enabled ones first, each in the order of the listing. One plugin
///         in two versions gives two records of one key.
/// Errors: none. A folder that cannot be listed is skipped.
[[nodiscard]] AudioPlugins scanWavesBundlePlugins(const platform::FileManager& files,
                                                  const PluginLocations& locations);

} // namespace orvanlite
