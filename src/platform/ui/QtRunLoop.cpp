#include "platform/ui/QtRunLoop.h"

#include <QPointer>
#include <QTimer>

#include <utility>

namespace {

class QtTimer final : public Timer {
    Q_DISABLE_COPY_MOVE(QtTimer)

public:
    explicit QtTimer(QTimer* timer)
        : m_timer(timer)
    {
    }
    ~QtTimer() override { invalidate(); }

    void invalidate() override
    {
        if (!m_timer)
            return;
        m_timer->stop();
        // Deleted later: a timer may be invalidated from its own callback.
        m_timer->deleteLater();
        m_timer.clear();
    }

private:
    QPointer<QTimer> m_timer;
};

struct Callback {
    std::function<void()> fire;
    bool isRunning { false };
};

} // namespace

std::unique_ptr<Timer> QtRunLoop::scheduleRepeatingTimer(std::chrono::milliseconds interval, std::function<void()> fire)
{
    auto* const timer = new QTimer(&m_timers);
    // Qt shifts the deadlines of coarse timers, which can change their order; precise timers fire in starting order.
    timer->setTimerType(Qt::PreciseTimer);
    timer->setInterval(interval);
    auto callback = std::make_shared<Callback>(Callback { std::move(fire) });
    QObject::connect(timer, &QTimer::timeout, timer, [callback = std::move(callback)] {
        if (callback->isRunning)
            return;
        callback->isRunning = true;
        callback->fire();
        callback->isRunning = false;
    });
    timer->start();
    return std::make_unique<QtTimer>(timer);
}
