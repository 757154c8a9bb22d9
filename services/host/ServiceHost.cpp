#include "services/host/ServiceHost.h"

#include "services/host/ListeningSocket.h"
#include "services/host/ServiceConnection.h"
#include "services/host/TransportPackets.h"

#include <QSocketNotifier>
#include <QTimer>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <optional>
#include <utility>

namespace {

// Connections that cannot be accepted for want of descriptors stay in the queue; asking for them again at once would
// keep the processor busy.
constexpr std::chrono::milliseconds pauseWithoutDescriptors { 100 };

} // namespace

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
public:
    using Connection = ServiceReply::Connection;

    explicit Private(Handler handler)
        : m_handler(std::make_shared<const Handler>(std::move(handler)))
    {
    }
    ~Private() { withdraw(); }
    Private(const Private&) = delete;
    Private& operator=(const Private&) = delete;

    bool publish(const std::string& root, const std::string& className, const std::string& instanceName);
    void withdraw();
    void dropConnections();
    bool isPublished() const { return m_socket.has_value(); }

private:
    void acceptConnection();

    std::shared_ptr<const Handler> m_handler;
    std::optional<ListeningSocket> m_socket;
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::vector<std::shared_ptr<Connection>> m_connections;
};

bool ServiceHost::Private::publish(
    const std::string& root, const std::string& className, const std::string& instanceName)
{
    if (m_socket) {
        errno = EALREADY;
        return false;
    }
    auto socket = ListeningSocket::publish(root, className, instanceName);
    if (!socket)
        return false;
    m_socket.emplace(std::move(*socket));
    m_notifier = std::make_unique<QSocketNotifier>(m_socket->descriptor(), QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { acceptConnection(); });
    return true;
}

void ServiceHost::Private::withdraw()
{
    m_notifier.reset();
    m_socket.reset();
    dropConnections();
}

void ServiceHost::Private::dropConnections()
{
    for (const auto& connection : std::exchange(m_connections, {}))
        connection->close();
}

void ServiceHost::Private::acceptConnection()
{
    FileDescriptor socket = m_socket->accept();
    if (!socket) {
        if (errno == EMFILE || errno == ENFILE || errno == ENOBUFS || errno == ENOMEM) {
            m_notifier->setEnabled(false);
            QTimer::singleShot(pauseWithoutDescriptors, m_notifier.get(),
                [notifier = m_notifier.get()] { notifier->setEnabled(true); });
        }
        return;
    }
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

bool ServiceHost::publish(const std::string& root, const std::string& className, const std::string& instanceName)
{
    return m_private->publish(root, className, instanceName);
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
