#include "services/linux/service/SystemManagers.h"

#include "posix/FileDescriptor.h"
#include "posix/SocketAddress.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

#include <memory>
#include <utility>

#include <sys/socket.h>

namespace {

constexpr int busTimeoutMs = 1500;

using Properties = QMap<QString, QVariantMap>;
using ManagedObjects = QMap<QDBusObjectPath, Properties>;

using Answered = std::function<void(const QDBusMessage&)>;

void call(const QDBusConnection& bus, const QDBusMessage& message, Answered answered)
{
    const auto pending = bus.asyncCall(message, busTimeoutMs);
    auto* const watcher = new QDBusPendingCallWatcher(pending);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, answered = std::move(answered)] {
        watcher->deleteLater();
        answered(watcher->reply());
    });
}

QDBusMessage method(const char* service, const QString& path, const char* interface, const char* name)
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        QString::fromLatin1(service), path, QString::fromLatin1(interface), QString::fromLatin1(name));
    // Asking must not start a manager.
    message.setAutoStartService(false);
    return message;
}

// Asks one manager after the other, and stops at the first one that has the interface.
class Inquiry : public std::enable_shared_from_this<Inquiry> {
public:
    Inquiry(QDBusConnection bus, std::string interfaceName, OtherManagers::Found found)
        : m_bus(std::move(bus))
        , m_name(std::move(interfaceName))
        , m_found(std::move(found))
    {
    }

    void askNetworkManager()
    {
        QDBusMessage message = method("org.freedesktop.NetworkManager",
            QStringLiteral("/org/freedesktop/NetworkManager"), "org.freedesktop.NetworkManager", "GetDeviceByIpIface");
        message << QString::fromStdString(m_name);
        call(m_bus, message, [self = shared_from_this()](const QDBusMessage& reply) {
            const auto path = reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty()
                ? reply.arguments().constFirst().value<QDBusObjectPath>().path()
                : QString();
            if (path.isEmpty())
                self->askIwd();
            else
                self->askWhetherManaged(path);
        });
    }

private:
    void askWhetherManaged(const QString& device)
    {
        QDBusMessage message
            = method("org.freedesktop.NetworkManager", device, "org.freedesktop.DBus.Properties", "Get");
        message << QStringLiteral("org.freedesktop.NetworkManager.Device") << QStringLiteral("Managed");
        call(m_bus, message, [self = shared_from_this()](const QDBusMessage& reply) {
            const bool isManaged = reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty()
                && reply.arguments().constFirst().value<QDBusVariant>().variant().toBool();
            if (isManaged)
                self->m_found(
                    "NetworkManager manages it; release it with: nmcli device set " + self->m_name + " managed no");
            else
                self->askIwd();
        });
    }

    void askIwd()
    {
        const QDBusMessage message
            = method("net.connman.iwd", QStringLiteral("/"), "org.freedesktop.DBus.ObjectManager", "GetManagedObjects");
        call(m_bus, message, [self = shared_from_this()](const QDBusMessage& reply) {
            const bool isHeld = reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty()
                && self->isAmong(qdbus_cast<ManagedObjects>(reply.arguments().constFirst()));
            if (isHeld)
                self->m_found("iwd manages it; release it by stopping iwd, or exclude it with iwd's option -I");
            else
                self->askSupplicant();
        });
    }

    [[nodiscard]] bool isAmong(const ManagedObjects& objects) const
    {
        for (const Properties& properties : objects) {
            const auto device = properties.value(QStringLiteral("net.connman.iwd.Device"));
            if (device.value(QStringLiteral("Name")).toString().toStdString() == m_name)
                return true;
        }
        return false;
    }

    void askSupplicant()
    {
        QDBusMessage message = method(
            "fi.w1.wpa_supplicant1", QStringLiteral("/fi/w1/wpa_supplicant1"), "fi.w1.wpa_supplicant1", "GetInterface");
        message << QString::fromStdString(m_name);
        call(m_bus, message, [self = shared_from_this()](const QDBusMessage& reply) {
            if (reply.type() == QDBusMessage::ReplyMessage)
                self->m_found("a wpa_supplicant of the system manages it; stop that service");
            else
                self->m_found({});
        });
    }

    QDBusConnection m_bus;
    std::string m_name;
    OtherManagers::Found m_found;
};

} // namespace

void SystemManagers::find(const std::string& interfaceName, Found found)
{
    if (hasControlSocket(m_controlDirectory, interfaceName)) {
        found("a wpa_supplicant of the system manages it; stop that service");
        return;
    }
    const QDBusConnection bus = m_connect();
    if (!bus.isConnected()) {
        found({});
        return;
    }
    qDBusRegisterMetaType<Properties>();
    qDBusRegisterMetaType<ManagedObjects>();
    std::make_shared<Inquiry>(bus, interfaceName, std::move(found))->askNetworkManager();
}

bool hasControlSocket(const std::string& directory, const std::string& interfaceName)
{
    const auto address = socketAddress(directory + '/' + interfaceName);
    if (!address)
        return false;
    const FileDescriptor socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    // A socket left behind by a dead process refuses.
    return ::connect(socket.get(), generic(*address), sizeof(*address)) == 0;
}
