#pragma once

namespace orvanlite {

/// What can be done to all that is selected.
enum class BulkAction { enable, disable, delete_ };

} // namespace orvanlite
