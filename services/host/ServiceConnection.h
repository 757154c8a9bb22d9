#pragma once

#include "posix/FileDescriptor.h"
#include "services/host/ServiceHost.h"

#include <QSocketNotifier>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <span>
#include <system_error>
#include <vector>

// The connection of one user client. Requests and replies alternate: a request that arrives before the reply to the
// previous one was sent is malformed and closes the connection, like one that does not parse.
class ServiceReply::Connection : public std::enable_shared_from_this<ServiceReply::Connection> {
public:
    using Closed = std::function<void(const std::shared_ptr<Connection>&)>;

    // The handler is shared because it must outlive a call that destroys the host. closed is called when the client or
    // an error ends the connection.
    Connection(FileDescriptor socket, std::shared_ptr<const ServiceHost::Handler> handler, Closed closed);

    // Starts serving; call it once a shared_ptr owns the connection.
    void start();
    // Closes the connection without calling closed.
    void close();

    // The serial number of the request that awaits its reply; 0 if there is none.
    [[nodiscard]] std::uint64_t unansweredRequest() const { return m_isUnanswered ? m_requestNumber : 0; }
    void answer(std::vector<std::byte> packet);
    void hangUp();

private:
    enum class State {
        New, // accepts only open
        Opening,
        Open, // accepts only calls
        Refused, // accepts nothing
        Closed,
    };

    void readPacket();
    void servePacket(std::span<const std::byte> packet);
    [[nodiscard]] bool isInTurn(RequestKind kind) const;
    void writePackets();
    [[nodiscard]] std::error_code sendNow(std::span<const std::byte> packet);
    void deleteNotifier(std::unique_ptr<QSocketNotifier>& notifier) const;

    FileDescriptor m_socket;
    std::shared_ptr<const ServiceHost::Handler> m_handler;
    Closed m_closed;
    std::unique_ptr<QSocketNotifier> m_readable;
    std::unique_ptr<QSocketNotifier> m_writable;
    std::deque<std::vector<std::byte>> m_unsent; // while the client does not read
    State m_state { State::New };
    std::uint64_t m_requestNumber { 0 };
    bool m_isUnanswered { false };
    bool m_isInNotifier { false }; // a notifier is on the call stack and must not be deleted
};
