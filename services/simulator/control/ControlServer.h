#pragma once

#include "services/host/ConnectionAcceptor.h"

#include <QByteArray>
#include <QObject>

#include <functional>
#include <optional>
#include <string>
#include <system_error>

class QLocalSocket;

// Answers each line that a client sends to the control socket with one line, in the Qt event loop. The socket and its
// directory are accessible only to the owner.
class ControlServer {
    Q_DISABLE_COPY_MOVE(ControlServer)

public:
    using Answer = std::function<QByteArray(const QByteArray& line)>;

    // A client that sends a longer line is disconnected.
    static constexpr qint64 maxRequestBytes = 1 << 20;

    // answer receives a line without its line feed and returns one without a line feed.
    explicit ControlServer(Answer answer);
    // Removes the socket and disconnects all clients.
    ~ControlServer() = default;

    // Creates a missing directory with mode 0700. Fails with permission_denied for a directory that someone else owns
    // or that group or others can access, with address_in_use if a live simulator has the socket, and with
    // filename_too_long if clients cannot connect to the path. Replaces the socket of a dead simulator.
    [[nodiscard]] std::error_code listen(const std::string& socketPath);

private:
    void addClient(FileDescriptor connection);
    void answerLines(QLocalSocket& client) const;

    Answer m_answer;
    QObject m_clients; // parent of their sockets
    std::optional<ConnectionAcceptor> m_acceptor;
};
