#pragma once

#include <qcorotask.h>

namespace orvanlite {

/// Lets a task run on by itself. Operations catch their own failures; one that escapes all the same is written to
/// the log of the process, instead of being lost with the task.
void detach(QCoro::Task<> task);

} // namespace orvanlite
