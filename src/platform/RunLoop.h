#pragma once

#include <chrono>
#include <functional>
#include <memory>

// A repeating timer. It fires until it is invalidated or destroyed, and never from within its own callback.
class Timer {
public:
    virtual ~Timer() = default;
    virtual void invalidate() = 0;
};

// The main run loop. Timers of the same interval fire in the order in which they were scheduled.
class RunLoop {
public:
    virtual ~RunLoop() = default;
    [[nodiscard]] virtual std::unique_ptr<Timer> scheduleRepeatingTimer(
        std::chrono::milliseconds interval, std::function<void()> fire)
        = 0;
};
