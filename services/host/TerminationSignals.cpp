#include "services/host/TerminationSignals.h"

#include <csignal>

#include <pthread.h>
#include <sys/signalfd.h>

TerminationSignals::TerminationSignals(std::function<void()> onTermination)
{
    sigset_t signals {};
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGINT);
    if (::pthread_sigmask(SIG_BLOCK, &signals, nullptr) != 0)
        return;
    m_signals = FileDescriptor(::signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK));
    if (!m_signals)
        return;
    m_notifier = std::make_unique<QSocketNotifier>(m_signals.get(), QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), std::move(onTermination));
}
