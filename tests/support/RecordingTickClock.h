#pragma once

#include "platform/TickClock.h"

#include <functional>
#include <vector>

// Records every delay and returns immediately.
class RecordingTickClock final : public TickClock {
public:
    void Delay(std::uint32_t numTicks) override
    {
        delays.push_back(numTicks);
        if (onDelay)
            onDelay(numTicks);
    }

    [[nodiscard]] std::chrono::nanoseconds elapsed() const override { return time; }

    std::vector<std::uint32_t> delays; // ticks
    std::chrono::nanoseconds time { 0 };
    std::function<void(std::uint32_t)> onDelay; // called during the delay
};
