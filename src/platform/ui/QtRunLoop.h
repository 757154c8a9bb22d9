#pragma once

#include "platform/RunLoop.h"

#include <QObject>

// The run loop of the application's thread. Timers fire wherever its events are handled, under a modal sheet
// too; a timer whose call is still under way when it falls due again skips that turn.
class QtRunLoop final : public RunLoop {
public:
    [[nodiscard]] std::unique_ptr<Timer> scheduleRepeatingTimer(
        std::chrono::milliseconds interval, std::function<void()> fire) override;

private:
    QObject m_timers; // parent of every timer: none fires once the run loop is gone
};
