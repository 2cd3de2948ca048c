#pragma once

#include "model/AudioPlugin.h"

namespace orvanlite {

/// Gives all plugins with the same name (ignoring case) the same manufacturer, then normalises the spelling
/// of known manufacturers.
///
/// Shape: the same plugins in the same order; only `manufacturer` may differ. The last Audio Unit with a real
///        manufacturer wins, otherwise the first plugin in another format. Unrelated plugins that share a
///        name get the same manufacturer.
[[nodiscard]] AudioPlugins crossReferenceManufacturers(AudioPlugins plugins);

} // namespace orvanlite
