#pragma once

#include "model/AudioPlugin.h"

namespace orvanlite {

/// Lets the best-informed copy of a plugin name correct all others, over formats and letter case, and then
/// gives known makers their one spelling.
///
/// Shape: the same plugins in the same order; only `manufacturer` may differ. The last Audio Unit of a name
///        that names a maker decides, otherwise the first copy in another format that does. Unrelated plugins
///        of one name end up with one maker.
[[nodiscard]] AudioPlugins crossReferenceManufacturers(AudioPlugins plugins);

} // namespace orvanlite
