#pragma once

#include <qcorotask.h>

#include <chrono>

namespace orvanlite::platform {

/// Current time and timers. Tests inject a clock that they advance by hand.
class Clock {
public:
    Clock() = default;
    Clock(const Clock&) = delete;
    Clock& operator=(const Clock&) = delete;
    virtual ~Clock() = default;

    /// Seconds since 1970-01-01 00:00:00 UTC, with fractions.
    [[nodiscard]] virtual double now() const = 0;

    /// Completes after the duration; the event loop keeps running.
    virtual QCoro::Task<> sleepFor(std::chrono::milliseconds duration) = 0;
};

} // namespace orvanlite::platform
