#pragma once

#include "model/PluginError.h"

namespace orvanlite {

/// Converts an exception for `error`: a PluginError is kept, anything else becomes an unknown error with its
/// text.
[[nodiscard]] PluginError toPluginError(const std::exception& thrown);

} // namespace orvanlite
