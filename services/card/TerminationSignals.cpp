#include "services/card/TerminationSignals.h"

#include <csignal>

#include <pthread.h>
#include <sys/signalfd.h>
#include <unistd.h>

TerminationSignals::TerminationSignals(std::function<void()> onTermination)
{
    sigset_t signals {};
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGINT);
    if (::pthread_sigmask(SIG_BLOCK, &signals, nullptr) != 0)
        return;
    m_descriptor = ::signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
    if (m_descriptor < 0)
        return;
    m_notifier = std::make_unique<QSocketNotifier>(m_descriptor, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
        [onTermination = std::move(onTermination)] { onTermination(); });
}

TerminationSignals::~TerminationSignals()
{
    m_notifier.reset();
    if (m_descriptor >= 0)
        (void)::close(m_descriptor);
}
