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

#include <algorithm>
#include <initializer_list>
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

bool isReply(const QDBusMessage& message)
{
    return message.type() == QDBusMessage::ReplyMessage && !message.arguments().isEmpty();
}

bool isOneOf(const QDBusMessage& message, std::initializer_list<const char*> errors)
{
    return std::any_of(errors.begin(), errors.end(),
        [&message](const char* error) { return message.errorName() == QLatin1String(error); });
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
            if (isReply(reply)) {
                self->askWhetherManaged(reply.arguments().constFirst().value<QDBusObjectPath>().path());
                return;
            }
            self->note("NetworkManager", reply, { "org.freedesktop.NetworkManager.UnknownDevice" });
            self->askIwd();
        });
    }

private:
    void askWhetherManaged(const QString& device)
    {
        QDBusMessage message
            = method("org.freedesktop.NetworkManager", device, "org.freedesktop.DBus.Properties", "Get");
        message << QStringLiteral("org.freedesktop.NetworkManager.Device") << QStringLiteral("Managed");
        call(m_bus, message, [self = shared_from_this()](const QDBusMessage& reply) {
            const bool isManaged
                = isReply(reply) && reply.arguments().constFirst().value<QDBusVariant>().variant().toBool();
            if (isManaged) {
                self->held(
                    "NetworkManager manages it; release it with: nmcli device set " + self->m_name + " managed no");
                return;
            }
            if (!isReply(reply))
                self->note("NetworkManager", reply, {});
            self->askIwd();
        });
    }

    void askIwd()
    {
        const QDBusMessage message
            = method("net.connman.iwd", QStringLiteral("/"), "org.freedesktop.DBus.ObjectManager", "GetManagedObjects");
        call(m_bus, message, [self = shared_from_this()](const QDBusMessage& reply) {
            if (!isReply(reply))
                self->note("iwd", reply, {});
            else if (self->isAmong(qdbus_cast<ManagedObjects>(reply.arguments().constFirst()))) {
                self->held("iwd manages it; release it by stopping iwd, or exclude it with iwd's option -I");
                return;
            } else
                self->notKnown();
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
            if (isReply(reply)) {
                self->held("a wpa_supplicant of the system manages it; stop that service");
                return;
            }
            self->note("the system's wpa_supplicant", reply, { "fi.w1.wpa_supplicant1.InterfaceUnknown" });
            self->m_found(self->m_finding);
        });
    }

    // A manager that does not run holds nothing. Any other failure says nothing about the interface: the manager may be
    // about to start, or may not talk to us.
    void note(const char* manager, const QDBusMessage& reply, std::initializer_list<const char*> unknownInterface)
    {
        if (isOneOf(
                reply, { "org.freedesktop.DBus.Error.ServiceUnknown", "org.freedesktop.DBus.Error.NameHasNoOwner" }))
            return;
        if (isOneOf(reply, unknownInterface))
            notKnown();
        else
            m_finding = { ManagerFinding::Kind::Unclear,
                std::string(manager) + " does not say whether it manages it: " + reply.errorName().toStdString() };
    }

    void notKnown()
    {
        if (m_finding.kind == ManagerFinding::Kind::Free)
            m_finding.kind = ManagerFinding::Kind::NotKnown;
    }

    void held(const std::string& text) { m_found({ ManagerFinding::Kind::Held, text }); }

    QDBusConnection m_bus;
    std::string m_name;
    OtherManagers::Found m_found;
    ManagerFinding m_finding;
};

} // namespace

void SystemManagers::find(const std::string& interfaceName, Found found)
{
    if (hasControlSocket(m_controlDirectory, interfaceName)) {
        found({ ManagerFinding::Kind::Held, "a wpa_supplicant of the system manages it; stop that service" });
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
