#pragma once

#include "platform/TickClock.h"

// A clock for a program with windows. Before a wait of a second or more, it shows the wait cursor and repaints all
// windows with their children, because they are not painted while the thread sleeps. It fires no timers and processes
// no input, so a wait never re-enters its caller.
class WindowTickClock final : public TickClock {
public:
    // sleeper performs the waits; it must outlive this clock.
    explicit WindowTickClock(TickClock& sleeper);
    void Delay(std::uint32_t numTicks) override;
    [[nodiscard]] std::chrono::nanoseconds elapsed() const override { return m_sleeper.elapsed(); }

private:
    TickClock& m_sleeper;
};
