#pragma once

#include "platform/Clock.h"

namespace orvanlite::platform {

/// The machine's clock and the event loop's timers.
class SystemClock final : public Clock {
public:
    [[nodiscard]] double now() const override;
    QCoro::Task<> sleepFor(std::chrono::milliseconds duration) override;
};

} // namespace orvanlite::platform
