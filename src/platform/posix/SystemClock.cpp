#include "platform/posix/SystemClock.h"

#include <qcorotimer.h>

#include <algorithm>

namespace orvanlite::platform {

double SystemClock::now() const
{
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration<double>(sinceEpoch).count();
}

QCoro::Task<> SystemClock::sleepFor(std::chrono::milliseconds duration)
{
    const auto notNegative = std::max(duration, std::chrono::milliseconds(0));
    co_await QCoro::sleepFor(notNegative);
}

} // namespace orvanlite::platform
