#include "services/linux/service/SystemManagers.h"

#include "posix/FileDescriptor.h"
#include "tests/platform/FakeLogind.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QElapsedTimer>
#include <gtest/gtest.h>

#include <cstring>

#include <sys/socket.h>
#include <sys/un.h>

namespace {

// A program on the bus whose every object answers calls by their method's name, or with an error; it does not know other
// methods.
class FakeManager final : public QDBusVirtualObject {
public:
    FakeManager(const QString& busAddress, const QString& service)
        : m_connection(QDBusConnection::connectToBus(busAddress, service))
    {
        EXPECT_TRUE(m_connection.registerVirtualObject(QStringLiteral("/"), this, QDBusConnection::SubPath));
        EXPECT_TRUE(m_connection.registerService(service));
    }
    ~FakeManager() override { QDBusConnection::disconnectFromBus(m_connection.name()); }

    [[nodiscard]] QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override
    {
        if (!error.isEmpty())
            return connection.send(message.createErrorReply(error, QStringLiteral("refused")));
        const auto answer = answers.find(message.member());
        if (answer == answers.end())
            return false;
        return connection.send(message.createReply(*answer));
    }

    QMap<QString, QVariant> answers;
    QString error;

private:
    QDBusConnection m_connection;
};

class SystemManagersTest : public testing::Test {
protected:
    ~SystemManagersTest() override { QDBusConnection::disconnectFromBus(QStringLiteral("client")); }

    using Kind = ManagerFinding::Kind;

    // Who has wlan0; "(free)", "(not known)", or "(no answer)" if nothing is said.
    std::string holder()
    {
        const ManagerFinding finding = find();
        switch (finding.kind) {
        case Kind::Free:
            return "(free)";
        case Kind::NotKnown:
            return "(not known)";
        case Kind::Unclear:
        case Kind::Held:
            break;
        }
        return finding.text;
    }
    ManagerFinding find()
    {
        SystemManagers managers(
            [this] { return QDBusConnection::connectToBus(bus.address(), QStringLiteral("client")); },
            folder.path().toStdString());
        ManagerFinding found { Kind::Held, "(no answer)" };
        bool isAnswered = false;
        managers.find("wlan0", [&](const ManagerFinding& finding) {
            found = finding;
            isAnswered = true;
        });
        QElapsedTimer timer;
        timer.start();
        while (!isAnswered && timer.elapsed() < 10'000)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        return found;
    }

    PrivateBus bus;
    QTemporaryDir folder { QStringLiteral("/tmp/managers-XXXXXX") };
};

const QString networkManager = QStringLiteral("org.freedesktop.NetworkManager");

} // namespace

TEST_F(SystemManagersTest, MachineWithoutManagersHasNone)
{
    ASSERT_FALSE(bus.address().isEmpty());
    EXPECT_EQ(holder(), "(free)");
}

TEST_F(SystemManagersTest, NetworkManagerIsNamedWithTheWayOut)
{
    FakeManager manager(bus.address(), networkManager);
    manager.answers = {
        { QStringLiteral("GetDeviceByIpIface"), QVariant::fromValue(QDBusObjectPath(QStringLiteral("/device/1"))) },
        { QStringLiteral("Get"), QVariant::fromValue(QDBusVariant(true)) },
    };
    EXPECT_EQ(holder(), "NetworkManager manages it; release it with: nmcli device set wlan0 managed no");
    manager.answers[QStringLiteral("Get")] = QVariant::fromValue(QDBusVariant(false));
    EXPECT_EQ(holder(), "(free)");
    manager.error = QStringLiteral("org.freedesktop.NetworkManager.UnknownDevice");
    EXPECT_EQ(holder(), "(not known)");
}

TEST_F(SystemManagersTest, FailureOfAManagerIsNoFreedom)
{
    FakeManager manager(bus.address(), networkManager);
    manager.error = QStringLiteral("org.freedesktop.DBus.Error.AccessDenied");
    const ManagerFinding finding = find();
    EXPECT_EQ(finding.kind, Kind::Unclear);
    EXPECT_EQ(
        finding.text, "NetworkManager does not say whether it manages it: org.freedesktop.DBus.Error.AccessDenied");
}

TEST_F(SystemManagersTest, SupplicantOfTheSystemIsFoundOnTheBus)
{
    FakeManager manager(bus.address(), QStringLiteral("fi.w1.wpa_supplicant1"));
    manager.error = QStringLiteral("fi.w1.wpa_supplicant1.InterfaceUnknown");
    EXPECT_EQ(holder(), "(not known)");
    manager.error.clear();
    manager.answers
        = { { QStringLiteral("GetInterface"), QVariant::fromValue(QDBusObjectPath(QStringLiteral("/interface/0"))) } };
    EXPECT_EQ(holder(), "a wpa_supplicant of the system manages it; stop that service");
}

TEST_F(SystemManagersTest, IwdIsAskedForItsDevices)
{
    using Properties = QMap<QString, QVariantMap>;
    using Objects = QMap<QDBusObjectPath, Properties>;
    qDBusRegisterMetaType<Properties>();
    qDBusRegisterMetaType<Objects>();
    FakeManager manager(bus.address(), QStringLiteral("net.connman.iwd"));
    const auto devices = [](const QString& name) {
        const QVariantMap device { { QStringLiteral("Name"), name } };
        return QVariant::fromValue(Objects { { QDBusObjectPath(QStringLiteral("/0/1")),
            Properties { { QStringLiteral("net.connman.iwd.Device"), device } } } });
    };
    manager.answers = { { QStringLiteral("GetManagedObjects"), devices(QStringLiteral("wlan1")) } };
    EXPECT_EQ(holder(), "(not known)");
    manager.answers = { { QStringLiteral("GetManagedObjects"), devices(QStringLiteral("wlan0")) } };
    EXPECT_EQ(holder().substr(0, 3), "iwd");
}

TEST_F(SystemManagersTest, SupplicantWithoutABusIsFoundByItsSocket)
{
    bus.stop();
    sockaddr_un address {};
    address.sun_family = AF_UNIX;
    std::strncpy(
        address.sun_path, folder.filePath(QStringLiteral("wlan0")).toUtf8().constData(), sizeof(address.sun_path) - 1);
    FileDescriptor socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    ASSERT_EQ(::bind(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);
    EXPECT_EQ(holder(), "a wpa_supplicant of the system manages it; stop that service");
    socket.reset(); // dead, its file remains
    EXPECT_EQ(holder(), "(free)");
}
