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
#include <vector>

// One user client, as the service sees it. Requests and replies alternate: a packet that comes before the reply to the
// one before it is as malformed as one that does not parse, and ends the connection.
class ServiceReply::Connection : public std::enable_shared_from_this<ServiceReply::Connection> {
public:
    using Closed = std::function<void(const std::shared_ptr<Connection>&)>;

    // The handler is shared because it has to outlive the call of it that ends the host. closed tells the owner that
    // the connection is of no more use.
    Connection(FileDescriptor socket, std::shared_ptr<const ServiceHost::Handler> handler, Closed closed);

    // Begins to serve; the connection must be owned by then.
    void start();
    // Ends the connection without telling the owner.
    void close();

    // The running number of the request that waits for its reply, 0 when none does.
    [[nodiscard]] std::uint64_t unansweredRequest() const { return m_isUnanswered ? m_requestNumber : 0; }
    void answer(std::vector<std::byte> packet);
    void hangUp();

private:
    enum class State {
        New, // only open is understood
        Opening,
        Open, // only calls are
        Refused, // nothing is
        Closed,
    };

    void readPacket();
    void servePacket(std::span<const std::byte> packet);
    [[nodiscard]] bool isInTurn(RequestKind kind) const;
    void writePackets();
    [[nodiscard]] bool sendNow(std::span<const std::byte> packet);
    void discard(std::unique_ptr<QSocketNotifier>& notifier) const;

    FileDescriptor m_socket;
    std::shared_ptr<const ServiceHost::Handler> m_handler;
    Closed m_closed;
    std::unique_ptr<QSocketNotifier> m_readable;
    std::unique_ptr<QSocketNotifier> m_writable;
    std::deque<std::vector<std::byte>> m_unsent; // while the client does not read
    State m_state { State::New };
    std::uint64_t m_requestNumber { 0 };
    bool m_isUnanswered { false };
    bool m_isNotified { false }; // a notifier is calling, and cannot be deleted now
};
