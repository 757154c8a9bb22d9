#pragma once

#include "platform/RunLoop.h"

#include <QObject>

// The run loop of the main thread. Timers fire whenever it processes events, including while a modal sheet runs. A
// timer whose callback is still running when it is due skips that turn.
class QtRunLoop final : public RunLoop {
public:
    [[nodiscard]] std::unique_ptr<Timer> scheduleRepeatingTimer(
        std::chrono::milliseconds interval, std::function<void()> fire) override;

private:
    QObject m_timers; // parent of all timers: none fires after the run loop is destroyed
};
