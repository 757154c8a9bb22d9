#pragma once

#include <QSocketNotifier>

#include <functional>
#include <memory>

// Turns SIGTERM and SIGINT into a call in the Qt event loop, so that ending cleans up. Before any thread is made: the
// signals are blocked for those that follow.
class TerminationSignals {
public:
    explicit TerminationSignals(std::function<void()> onTermination);
    ~TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

private:
    int m_descriptor { -1 };
    std::unique_ptr<QSocketNotifier> m_notifier;
};
