#pragma once

#include "platform/TickClock.h"

// Sleeps on the monotonic clock, so that setting the time of day neither shortens nor lengthens a wait; signals do not
// either.
class SystemTickClock final : public TickClock {
public:
    void Delay(std::uint32_t numTicks) override;
};
