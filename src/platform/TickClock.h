#pragma once

#include <cstdint>

// Waits in ticks of 1/60 s.
class TickClock {
public:
    virtual ~TickClock() = default;
    // Blocks the calling thread without processing events.
    virtual void Delay(std::uint32_t numTicks) = 0;
};

inline constexpr std::uint32_t ticksPerSecond = 60;
