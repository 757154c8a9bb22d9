#pragma once

#include <chrono>
#include <cstdint>

// Waits in ticks of 1/60 s, and measures time.
class TickClock {
public:
    virtual ~TickClock() = default;
    // Blocks the calling thread without processing events.
    virtual void Delay(std::uint32_t numTicks) = 0;
    // Time since an arbitrary start; never runs backwards.
    [[nodiscard]] virtual std::chrono::nanoseconds elapsed() const = 0;
};

inline constexpr std::uint32_t ticksPerSecond = 60;
