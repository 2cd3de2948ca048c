#pragma once

#include "model/PluginError.h"

namespace orvanlite {

/// What an operation puts into `error`: a PluginError as it is, anything else as an unknown error with its text.
[[nodiscard]] PluginError toPluginError(const std::exception& thrown);

} // namespace orvanlite
