#pragma once

#include "posix/FileDescriptor.h"

#include <QSocketNotifier>

#include <functional>
#include <memory>

// Turns SIGTERM and SIGINT into a call from the Qt event loop, so that the process can clean up. Create it before any
// thread: threads inherit the signal mask that blocks both signals.
class TerminationSignals {
    Q_DISABLE_COPY_MOVE(TerminationSignals)

public:
    explicit TerminationSignals(std::function<void()> onTermination);
    ~TerminationSignals() = default;

private:
    FileDescriptor m_signals;
    std::unique_ptr<QSocketNotifier> m_notifier;
};
