#include "tests/support/ManualRunLoop.h"

#include "platform/TimerSchedule.h"

#include <QtGlobal>

#include <algorithm>
#include <utility>

struct ManualRunLoop::Entry {
    std::chrono::milliseconds interval;
    std::chrono::milliseconds due;
    std::function<void()> fire;
    bool active { true };
    bool firing { false };
};

class ManualRunLoop::ManualTimer final : public Timer {
public:
    explicit ManualTimer(std::shared_ptr<Entry> entry)
        : m_entry(std::move(entry))
    {
    }
    ~ManualTimer() override { m_entry->active = false; }
    Q_DISABLE_COPY_MOVE(ManualTimer)

    void invalidate() override { m_entry->active = false; }

private:
    std::shared_ptr<Entry> m_entry;
};

std::unique_ptr<Timer> ManualRunLoop::scheduleRepeatingTimer(
    std::chrono::milliseconds interval, std::function<void()> fire)
{
    removeInactive();
    // A zero interval would make advance() loop forever.
    interval = std::max(interval, std::chrono::milliseconds(1));
    auto entry = std::make_shared<Entry>(Entry { interval, m_now + interval, std::move(fire) });
    m_entries.push_back(entry);
    return std::make_unique<ManualTimer>(std::move(entry));
}

void ManualRunLoop::advance(std::chrono::milliseconds time)
{
    const auto until = m_now + time;
    while (const auto entry = nextDue(until)) {
        m_now = std::max(m_now, entry->due);
        const auto fired = m_now;
        entry->firing = true;
        entry->fire();
        entry->firing = false;
        entry->due = std::chrono::duration_cast<std::chrono::milliseconds>(
            nextFiringTime(entry->due, entry->interval, fired, m_now));
    }
    m_now = std::max(m_now, until);
    removeInactive();
}

std::vector<std::chrono::milliseconds> ManualRunLoop::activeIntervals() const
{
    std::vector<std::chrono::milliseconds> intervals;
    for (const auto& entry : m_entries) {
        if (entry->active)
            intervals.push_back(entry->interval);
    }
    return intervals;
}

std::shared_ptr<ManualRunLoop::Entry> ManualRunLoop::nextDue(std::chrono::milliseconds until)
{
    std::shared_ptr<Entry> next;
    for (const auto& entry : m_entries) {
        if (entry->active && !entry->firing && entry->due <= until && (next == nullptr || entry->due < next->due))
            next = entry;
    }
    return next;
}

void ManualRunLoop::removeInactive()
{
    std::erase_if(m_entries, [](const auto& entry) { return !entry->active; });
}
