#include "services/host/ConnectionAcceptor.h"

#include <QTimer>

#include <chrono>
#include <utility>

namespace {

// Connections that cannot be accepted stay in the queue, and the notifier would fire again at once: pause instead of
// keeping the processor busy.
constexpr std::chrono::milliseconds outOfResourcesPause { 100 };

bool isOutOfResources(std::error_code error)
{
    return error == std::errc::too_many_files_open || error == std::errc::too_many_files_open_in_system
        || error == std::errc::no_buffer_space || error == std::errc::not_enough_memory;
}

} // namespace

ConnectionAcceptor::ConnectionAcceptor(ListeningSocket socket, Accepted accepted)
    : m_socket(std::move(socket))
    , m_accepted(std::move(accepted))
    , m_notifier(m_socket.descriptor(), QSocketNotifier::Read)
{
    QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_notifier, [this] { accept(); });
}

void ConnectionAcceptor::accept()
{
    std::error_code error;
    FileDescriptor connection = m_socket.accept(error);
    if (connection) {
        m_accepted(std::move(connection));
    } else if (isOutOfResources(error)) {
        m_notifier.setEnabled(false);
        QTimer::singleShot(outOfResourcesPause, &m_notifier, [this] { m_notifier.setEnabled(true); });
    }
}
