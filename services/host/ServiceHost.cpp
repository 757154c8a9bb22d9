#include "services/host/ServiceHost.h"

#include "services/host/ConnectionAcceptor.h"
#include "services/host/ServiceConnection.h"
#include "services/host/TransportPackets.h"

#include <optional>
#include <utility>

ServiceReply::ServiceReply(std::weak_ptr<Connection> connection, std::uint32_t replyCapacity)
    : m_connection(std::move(connection))
    , m_replyCapacity(replyCapacity)
{
    if (const auto shared = m_connection.lock())
        m_requestNumber = shared->unansweredRequest();
}

void ServiceReply::send(std::uint32_t result, std::span<const std::byte> output)
{
    const auto connection = m_connection.lock();
    if (connection && m_requestNumber != 0 && connection->unansweredRequest() == m_requestNumber)
        connection->answer(makeReply(result, output, m_replyCapacity));
}

void ServiceReply::sendPacket(std::span<const std::byte> packet)
{
    if (const auto connection = m_connection.lock())
        connection->answer({ packet.begin(), packet.end() });
}

void ServiceReply::hangUp()
{
    if (const auto connection = m_connection.lock())
        connection->hangUp();
}

class ServiceHost::Private {
    Q_DISABLE_COPY_MOVE(Private)

public:
    using Connection = ServiceReply::Connection;

    explicit Private(Handler handler)
        : m_handler(std::make_shared<const Handler>(std::move(handler)))
    {
    }
    ~Private() { withdraw(); }

    std::error_code publish(const std::string& root, const std::string& className, const std::string& instanceName,
        const ServiceAccess& access);
    void withdraw();
    void dropConnections();
    bool isPublished() const { return m_acceptor.has_value(); }

private:
    void addConnection(FileDescriptor socket);

    std::shared_ptr<const Handler> m_handler;
    std::optional<ConnectionAcceptor> m_acceptor;
    std::vector<std::shared_ptr<Connection>> m_connections;
};

std::error_code ServiceHost::Private::publish(
    const std::string& root, const std::string& className, const std::string& instanceName, const ServiceAccess& access)
{
    if (m_acceptor)
        return std::make_error_code(std::errc::already_connected);
    std::error_code error;
    auto socket = ListeningSocket::publish(root, className, instanceName, error, access);
    if (socket)
        m_acceptor.emplace(
            std::move(*socket), [this](FileDescriptor connection) { addConnection(std::move(connection)); });
    return error;
}

void ServiceHost::Private::withdraw()
{
    m_acceptor.reset();
    dropConnections();
}

void ServiceHost::Private::dropConnections()
{
    for (const auto& connection : std::exchange(m_connections, {}))
        connection->close();
}

void ServiceHost::Private::addConnection(FileDescriptor socket)
{
    const auto connection = std::make_shared<Connection>(
        std::move(socket), m_handler, [this](const auto& closed) { std::erase(m_connections, closed); });
    m_connections.push_back(connection);
    connection->start();
}

ServiceHost::ServiceHost(Handler handler)
    : m_private(std::make_unique<Private>(std::move(handler)))
{
}

ServiceHost::~ServiceHost() = default;

std::error_code ServiceHost::publish(
    const std::string& root, const std::string& className, const std::string& instanceName, const ServiceAccess& access)
{
    return m_private->publish(root, className, instanceName, access);
}

void ServiceHost::withdraw()
{
    m_private->withdraw();
}

void ServiceHost::dropConnections()
{
    m_private->dropConnections();
}

bool ServiceHost::isPublished() const
{
    return m_private->isPublished();
}
