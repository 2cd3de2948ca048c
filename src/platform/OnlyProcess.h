#pragma once

#include <QString>

namespace orvanlite::platform {

/// Makes this process the only one that holds the file, until it ends in whatever way. False when another one holds
/// it. True when the file cannot be opened: two processes are better than none.
[[nodiscard]] bool becomeOnlyProcess(const QString& file);

} // namespace orvanlite::platform
