#pragma once

#include "platform/RunLoop.h"

#include <QElapsedTimer>
#include <QTimer>

#include <chrono>
#include <memory>
#include <vector>

// The run loop of the application's thread. Timers fire wherever its events are handled, including under a modal
// sheet. A timer whose callback is still running when it falls due skips that turn. Of the firing times that a timer
// missed while other callbacks ran, the first is served late and the rest are skipped (platform/TimerSchedule.h).
class QtRunLoop final : public RunLoop {
public:
    QtRunLoop();

    [[nodiscard]] std::unique_ptr<Timer> scheduleRepeatingTimer(
        std::chrono::milliseconds interval, std::function<void()> fire) override;

private:
    struct Entry;
    class EntryTimer;

    [[nodiscard]] std::chrono::nanoseconds now() const;
    [[nodiscard]] std::shared_ptr<Entry> earliest();
    void wakeForTheEarliest();
    void fireDueTimers();
    void fire(Entry& entry);

    QElapsedTimer m_clock;
    QTimer m_wakeUp; // one QTimer for all; separate ones would not fire in order
    std::vector<std::shared_ptr<Entry>> m_entries; // in the order in which they were scheduled
};
