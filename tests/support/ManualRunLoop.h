#pragma once

#include "platform/RunLoop.h"

#include <chrono>
#include <cstddef>
#include <memory>
#include <vector>

// A run loop with its own clock, which only advance() moves. Timers due at the same time fire in scheduling order.
// Timers may outlive the run loop; they no longer fire then.
class ManualRunLoop final : public RunLoop {
public:
    [[nodiscard]] std::unique_ptr<Timer> scheduleRepeatingTimer(
        std::chrono::milliseconds interval, std::function<void()> fire) override;

    // Fires every timer that becomes due. May be called from a timer's callback, as in a modal run; that timer skips
    // its turns until the callback returns.
    void advance(std::chrono::milliseconds time);

    // Milliseconds since the run loop was created.
    [[nodiscard]] std::chrono::milliseconds now() const { return m_now; }
    // Intervals of the active timers, in scheduling order.
    [[nodiscard]] std::vector<std::chrono::milliseconds> activeIntervals() const;

private:
    struct Entry;
    class ManualTimer;

    [[nodiscard]] std::shared_ptr<Entry> nextDue(std::chrono::milliseconds until);
    void removeInactive();

    std::vector<std::shared_ptr<Entry>> m_entries; // in scheduling order
    std::chrono::milliseconds m_now { 0 };
};
