#include "platform/ui/QtRunLoop.h"

#include <QPointer>
#include <QTimer>

#include <utility>

namespace {

class QtTimer final : public Timer {
public:
    explicit QtTimer(QTimer* timer)
        : m_timer(timer)
    {
    }
    ~QtTimer() override { invalidate(); }
    QtTimer(const QtTimer&) = delete;
    QtTimer& operator=(const QtTimer&) = delete;
    QtTimer(QtTimer&&) = delete;
    QtTimer& operator=(QtTimer&&) = delete;

    void invalidate() override
    {
        if (!m_timer)
            return;
        m_timer->stop();
        // A timer may be invalidated from within its own call, so it goes only afterwards, its closure with it.
        m_timer->deleteLater();
        m_timer.clear();
    }

private:
    QPointer<QTimer> m_timer;
};

struct Call {
    std::function<void()> fire;
    bool underWay { false };
};

} // namespace

std::unique_ptr<Timer> QtRunLoop::scheduleRepeatingTimer(std::chrono::milliseconds interval, std::function<void()> fire)
{
    auto* const timer = new QTimer(&m_timers);
    // Coarse timers of one interval are moved together and apart again; precise ones keep the order in which
    // they were started.
    timer->setTimerType(Qt::PreciseTimer);
    timer->setInterval(interval);
    auto call = std::make_shared<Call>(Call { std::move(fire) });
    QObject::connect(timer, &QTimer::timeout, timer, [call = std::move(call)] {
        if (call->underWay)
            return;
        call->underWay = true;
        call->fire();
        call->underWay = false;
    });
    timer->start();
    return std::make_unique<QtTimer>(timer);
}
