#pragma once

#include "platform/TickClock.h"

// A clock for a program with windows. Before a wait of a second or more it shows the wait cursor and paints what
// the windows are about to show, for nothing is painted while the thread sleeps. Painting is all it does: no
// timer fires and no input is handled, so a wait never re-enters its caller. The cursor is restored afterwards.
class WindowTickClock final : public TickClock {
public:
    // sleeper does the waiting itself and outlives this clock.
    explicit WindowTickClock(TickClock& sleeper);
    void Delay(std::uint32_t numTicks) override;

private:
    TickClock& m_sleeper;
};
