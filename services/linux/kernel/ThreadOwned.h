#pragma once

#include "services/linux/kernel/WorkerThread.h"

#include <functional>
#include <memory>
#include <utility>

// An object that lives in a thread of its own, so that what blocks it blocks nobody else. Calls are carried out there in
// their order.
template <typename Object> class ThreadOwned {
    Q_DISABLE_COPY_MOVE(ThreadOwned)

public:
    // make is called in the thread.
    explicit ThreadOwned(std::function<std::unique_ptr<Object>()> make)
    {
        m_thread.post([object = m_object, make = std::move(make)] { *object = make(); });
    }
    ~ThreadOwned()
    {
        m_thread.end([object = m_object] { object->reset(); });
    }

    void call(std::function<void(Object&)> work)
    {
        m_thread.post([object = m_object, work = std::move(work)] { work(**object); });
    }
    // done, to be called in the object's thread. It then runs in the main thread, unless this has been destroyed.
    template <typename Value>
    [[nodiscard]] std::function<void(Value)> fromMainThread(std::function<void(Value)> done) const
    {
        return [done = std::move(done), alive = std::weak_ptr(m_alive)](Value value) {
            WorkerThread::postToMainThread([done, alive, value = std::move(value)] {
                if (alive.lock())
                    done(value);
            });
        };
    }

private:
    WorkerThread m_thread;
    std::shared_ptr<std::unique_ptr<Object>> m_object { std::make_shared<std::unique_ptr<Object>>() };
    std::shared_ptr<bool> m_alive { std::make_shared<bool>(true) };
};
