#pragma once

#include "platform/RunLoop.h"

#include <chrono>
#include <cstddef>
#include <memory>
#include <vector>

// A run loop on a time of its own, which passes only when a test says so. Timers that fall due at the same moment
// fire in the order in which they were scheduled. Timers may outlive the run loop and then do nothing.
class ManualRunLoop final : public RunLoop {
public:
    [[nodiscard]] std::unique_ptr<Timer> scheduleRepeatingTimer(
        std::chrono::milliseconds interval, std::function<void()> fire) override;

    // Fires all that falls due on the way. May be called from within a timer's call, as a modal run would: the
    // timer whose call is under way skips its turns meanwhile.
    void advance(std::chrono::milliseconds time);

    // Milliseconds since the run loop was made.
    [[nodiscard]] std::chrono::milliseconds now() const { return m_now; }
    // Timers that still fire, by interval, in scheduling order.
    [[nodiscard]] std::vector<std::chrono::milliseconds> activeIntervals() const;

private:
    struct Entry;
    class ManualTimer;

    [[nodiscard]] std::shared_ptr<Entry> nextDue(std::chrono::milliseconds until);
    void removeInactive();

    std::vector<std::shared_ptr<Entry>> m_entries; // in scheduling order
    std::chrono::milliseconds m_now { 0 };
};
