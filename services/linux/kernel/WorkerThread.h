#pragma once

#include <QObject>
#include <QThread>

#include <functional>

// A thread with an event loop. Made and ended in the main thread.
class WorkerThread {
    Q_DISABLE_COPY_MOVE(WorkerThread)

public:
    // A thread that a system call holds for longer is left behind: it ends when the call returns.
    static constexpr int maxEndMs = 200;

    WorkerThread();
    // end() must have been called.
    ~WorkerThread() = default;

    void post(std::function<void()> work);
    // Carries out what was posted before, then the last work, and ends.
    void end(std::function<void()> lastWork);

    static void postToMainThread(std::function<void()> work);

private:
    QThread* m_thread; // deleted by end()
    QObject* m_worker; // deletes itself when the thread ends
};
