#pragma once

#include "platform/Clock.h"

namespace orvanlite::platform {

/// The system clock and event-loop timers.
class SystemClock final : public Clock {
public:
    [[nodiscard]] double now() const override;
    QCoro::Task<> sleepFor(std::chrono::milliseconds duration) override;
};

} // namespace orvanlite::platform
