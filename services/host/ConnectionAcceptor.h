#pragma once

#include "services/host/ListeningSocket.h"

#include <QSocketNotifier>

#include <functional>

// Accepts the clients of a listening socket in the Qt event loop. The socket is closed with the acceptor.
class ConnectionAcceptor {
    Q_DISABLE_COPY_MOVE(ConnectionAcceptor)

public:
    using Accepted = std::function<void(FileDescriptor)>;

    // accepted receives each new connection; it must not destroy the acceptor.
    ConnectionAcceptor(ListeningSocket socket, Accepted accepted);
    ~ConnectionAcceptor() = default;

private:
    void accept();

    ListeningSocket m_socket;
    Accepted m_accepted;
    QSocketNotifier m_notifier;
};
