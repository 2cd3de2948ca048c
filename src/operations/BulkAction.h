#pragma once

namespace orvanlite {

/// An action on the whole selection.
enum class BulkAction { enable, disable, delete_ };

} // namespace orvanlite
