#pragma once

#include "services/host/ListeningSocket.h"

#include <QtGlobal>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <system_error>
#include <vector>

// The server side of the driver transport (docs/driver-protocol.md): a listening SOCK_SEQPACKET socket on which every
// connection is one user client. Runs in the Qt event loop of the thread that created it.

enum class RequestKind : std::uint32_t {
    Open = 0,
    StructureCall = 1,
    ScalarCall = 2,
};

struct ServiceRequest {
    // The scalar call that ends every request.
    static constexpr std::uint32_t completionMethod = 1;

    RequestKind kind { RequestKind::Open };
    std::uint32_t selector { 0 }; // connection type for open, method index for calls
    std::uint32_t replyCapacity { 0 }; // bytes
    std::vector<std::byte> input;
};

// Answers one request, at once or later, in the host's thread. A client whose reply is destroyed unsent keeps waiting,
// as it would for a driver that hangs. Sending does nothing once the client or the host no longer exists.
class ServiceReply {
public:
    static constexpr std::uint32_t success = 0;
    // Clients treat every result except success alike.
    static constexpr std::uint32_t refused = 1;

    class Connection;
    ServiceReply(std::weak_ptr<Connection> connection, std::uint32_t replyCapacity);

    // Output is truncated to the reply capacity, and dropped if the result is a failure. Only the first answer to a
    // request counts.
    void send(std::uint32_t result, std::span<const std::byte> output = {});
    // Sends a packet unchecked, for services that misbehave on purpose.
    void sendPacket(std::span<const std::byte> packet);
    void hangUp();

private:
    std::weak_ptr<Connection> m_connection;
    std::uint32_t m_replyCapacity;
    std::uint64_t m_requestNumber { 0 };
};

class ServiceHost {
    Q_DISABLE_COPY_MOVE(ServiceHost)

public:
    // The class under which clients search for the adapter's driver.
    static constexpr const char* adapterClass = "Pellvane";

    // Called for each well-formed request in order: open first, calls only on connections that were opened with
    // success. Any other request closes its connection. The handler may withdraw or destroy the host.
    using Handler = std::function<void(const ServiceRequest& request, ServiceReply reply)>;

    explicit ServiceHost(Handler handler);
    ~ServiceHost();

    // Publishes the service as ROOT/CLASS/INSTANCE. Fails with already_connected if the host is published, otherwise as
    // ListeningSocket::publish() does.
    [[nodiscard]] std::error_code publish(const std::string& root, const std::string& className,
        const std::string& instanceName, const ServiceAccess& access = {});
    // Removes the socket, if this host still owns it, and closes every connection. The host can be published again.
    void withdraw();
    // Closes every connection and keeps listening.
    void dropConnections();
    [[nodiscard]] bool isPublished() const;

private:
    class Private;
    std::unique_ptr<Private> m_private;
};
