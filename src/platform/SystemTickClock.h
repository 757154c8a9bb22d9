#pragma once

#include "platform/TickClock.h"

// Sleeps on the monotonic clock: neither changes of the system time nor signals affect a wait.
class SystemTickClock final : public TickClock {
public:
    void Delay(std::uint32_t numTicks) override;
    [[nodiscard]] std::chrono::nanoseconds elapsed() const override;
};
