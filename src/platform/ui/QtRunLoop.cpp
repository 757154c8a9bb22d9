#include "platform/ui/QtRunLoop.h"

#include "platform/TimerSchedule.h"

#include <algorithm>
#include <utility>

using std::chrono::milliseconds;
using std::chrono::nanoseconds;

struct QtRunLoop::Entry {
    nanoseconds interval;
    nanoseconds due;
    std::function<void()> callback;
    bool isValid { true };
    bool isFiring { false };
};

class QtRunLoop::EntryTimer final : public Timer {
public:
    explicit EntryTimer(std::shared_ptr<Entry> entry)
        : m_entry(std::move(entry))
    {
    }
    ~EntryTimer() override { m_entry->isValid = false; }
    Q_DISABLE_COPY_MOVE(EntryTimer)

    void invalidate() override { m_entry->isValid = false; }

private:
    std::shared_ptr<Entry> m_entry;
};

QtRunLoop::QtRunLoop()
{
    m_clock.start();
    m_wakeUp.setSingleShot(true);
    m_wakeUp.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_wakeUp, &QTimer::timeout, &m_wakeUp, [this] { fireDueTimers(); });
}

std::unique_ptr<Timer> QtRunLoop::scheduleRepeatingTimer(milliseconds interval, std::function<void()> fire)
{
    // A timer without an interval would never let the event loop do anything else.
    interval = std::max(interval, milliseconds(1));
    auto entry = std::make_shared<Entry>(Entry { interval, now() + interval, std::move(fire) });
    m_entries.push_back(entry);
    wakeForTheEarliest();
    return std::make_unique<EntryTimer>(std::move(entry));
}

nanoseconds QtRunLoop::now() const
{
    return nanoseconds(m_clock.nsecsElapsed());
}

std::shared_ptr<QtRunLoop::Entry> QtRunLoop::earliest()
{
    std::erase_if(m_entries, [](const auto& entry) { return !entry->isValid; });
    std::shared_ptr<Entry> found;
    for (const auto& entry : m_entries) {
        if (!entry->isFiring && (!found || entry->due < found->due))
            found = entry;
    }
    return found;
}

void QtRunLoop::wakeForTheEarliest()
{
    if (const auto entry = earliest())
        m_wakeUp.start(std::max(std::chrono::ceil<milliseconds>(entry->due - now()), milliseconds(0)));
    else
        m_wakeUp.stop();
}

void QtRunLoop::fireDueTimers()
{
    // What falls due during a callback waits for the next wake-up, so the user's input is handled in between.
    const nanoseconds start = now();
    for (auto entry = earliest(); entry && entry->due <= start; entry = earliest())
        fire(*entry);
    wakeForTheEarliest();
}

void QtRunLoop::fire(Entry& entry)
{
    const nanoseconds fired = now();
    entry.isFiring = true;
    wakeForTheEarliest(); // the callback may run an event loop of its own
    entry.callback();
    entry.isFiring = false;
    entry.due = nextFiringTime(entry.due, entry.interval, fired, now());
}
