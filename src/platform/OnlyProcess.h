#pragma once

#include <QString>

namespace orvanlite::platform {

/// Locks the file until this process exits or is killed. False when another process holds the lock. True when
/// the file cannot be opened or locked for another reason: two processes are better than none.
[[nodiscard]] bool becomeOnlyProcess(const QString& file);

} // namespace orvanlite::platform
