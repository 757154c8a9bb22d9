#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

// The server half of the driver transport (docs/driver-protocol.md): a listening SOCK_SEQPACKET socket on which every
// connection is one user client. Runs in the Qt event loop of the thread that made it.

enum class RequestKind : std::uint32_t {
    Open = 0,
    StructureCall = 1,
    ScalarCall = 2,
};

struct ServiceRequest {
    RequestKind kind { RequestKind::Open };
    std::uint32_t selector { 0 }; // connection type for open, method index for calls
    std::uint32_t replyCapacity { 0 }; // bytes
    std::vector<std::byte> input;
};

// The way to answer one request, at once or later, in the thread of the host. A reply that is dropped unsent leaves its
// client waiting, as a driver that hangs would. Harmless once the client or the host is gone.
class ServiceReply {
public:
    class Connection;
    ServiceReply(std::weak_ptr<Connection> connection, std::uint32_t replyCapacity);

    // Result 0 is success. Output beyond the reply capacity is cut off; a failed result carries none. Only the first
    // answer to a request counts.
    void send(std::uint32_t result, std::span<const std::byte> output = {});
    // A packet as it stands, for services that misbehave on purpose.
    void sendPacket(std::span<const std::byte> packet);
    void hangUp();

private:
    std::weak_ptr<Connection> m_connection;
    std::uint32_t m_replyCapacity;
    std::uint64_t m_requestNumber { 0 };
};

class ServiceHost {
public:
    // Called for each well-formed request in its turn: open first, calls only on connections that were opened with
    // success. Anything else closes its connection. The handler may withdraw the host, or end it.
    using Handler = std::function<void(const ServiceRequest& request, ServiceReply reply)>;

    explicit ServiceHost(Handler handler);
    ~ServiceHost();
    ServiceHost(const ServiceHost&) = delete;
    ServiceHost& operator=(const ServiceHost&) = delete;

    // Publishes the service as ROOT/CLASS/INSTANCE, making the root and the class folder (0700) where they are missing
    // and taking the place of a socket that a dead process left behind. False, with errno set, when that fails:
    // EALREADY for a host that is published, EADDRINUSE where a live service has the name, EEXIST where something else
    // has it, EPERM for a class folder that others may write to or own, EINVAL and ENAMETOOLONG for names that cannot
    // be used.
    [[nodiscard]] bool publish(const std::string& root, const std::string& className, const std::string& instanceName);
    // Withdraws the service: the socket is removed, if it is still ours, and every connection closed. Can be published
    // again.
    void withdraw();
    // Closes every connection and goes on listening.
    void dropConnections();
    [[nodiscard]] bool isPublished() const;

private:
    class Private;
    std::unique_ptr<Private> m_private;
};
