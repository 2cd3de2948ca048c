#pragma once

#include <qcorotask.h>

namespace orvanlite {

/// Runs a task without a caller that awaits it. Operations handle their own failures; any other exception is
/// written to the process log instead of being lost.
void detach(QCoro::Task<> task);

} // namespace orvanlite
