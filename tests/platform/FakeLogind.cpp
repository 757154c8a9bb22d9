#include "tests/platform/FakeLogind.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVirtualObject>
#include <QFile>
#include <QMetaObject>
#include <QVariantMap>

#include <utility>

struct ListedSession {
    QString id;
    quint32 userId { 0 };
    QString userName;
    QString seat;
    QDBusObjectPath path;
};
Q_DECLARE_METATYPE(ListedSession)

QDBusArgument& operator<<(QDBusArgument& argument, const ListedSession& session)
{
    argument.beginStructure();
    argument << session.id << session.userId << session.userName << session.seat << session.path;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, ListedSession& session)
{
    argument.beginStructure();
    argument >> session.id >> session.userId >> session.userName >> session.seat >> session.path;
    argument.endStructure();
    return argument;
}

namespace {

const QString serviceName = QStringLiteral("org.freedesktop.login1");
const QString managerPath = QStringLiteral("/org/freedesktop/login1");
const QString connectionName = QStringLiteral("fakeLogind");

QString pathOf(const FakeSession& session)
{
    return managerPath + QStringLiteral("/session/") + session.id;
}

} // namespace

PrivateBus::PrivateBus()
{
    const QString configuration = m_directory.filePath(QStringLiteral("bus.conf"));
    QFile file(configuration);
    if (!file.open(QIODevice::WriteOnly))
        return;
    file.write("<busconfig><listen>unix:dir=" + QFile::encodeName(m_directory.path())
        + "</listen><policy context=\"default\"><allow send_destination=\"*\"/><allow receive_sender=\"*\"/><allow "
          "own=\"*\"/>"
          "<allow user=\"*\"/></policy></busconfig>");
    file.close();
    m_daemon.start(QStringLiteral("dbus-daemon"),
        { QStringLiteral("--nofork"), QStringLiteral("--print-address=1"),
            QStringLiteral("--config-file=") + configuration });
    while (!m_daemon.canReadLine() && m_daemon.waitForReadyRead()) { }
    m_address = QString::fromUtf8(m_daemon.readLine()).trimmed();
}

PrivateBus::~PrivateBus()
{
    stop();
}

void PrivateBus::stop()
{
    m_daemon.kill();
    m_daemon.waitForFinished();
}

class FakeLogind::Objects final : public QDBusVirtualObject {
public:
    [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override
    {
        if (message.path() == managerPath && message.interface() == QLatin1String("org.freedesktop.login1.Manager")
            && message.member() == QLatin1String("ListSessions"))
            return respond(
                message, connection, listBehaviour, [this] { return QVariant::fromValue(listedSessions()); });
        if (message.interface() == QLatin1String("org.freedesktop.DBus.Properties")
            && message.member() == QLatin1String("GetAll")
            && message.arguments().value(0).toString() == QLatin1String("org.freedesktop.login1.Session")) {
            for (const FakeSession& session : std::as_const(sessions)) {
                if (!session.ended && pathOf(session) == message.path())
                    return respond(message, connection, propertyBehaviour, [&] { return propertiesOf(session); });
            }
        }
        return false; // the caller gets an UnknownObject error
    }

    QList<FakeSession> sessions;
    Behaviour listBehaviour { Behaviour::Answer };
    Behaviour propertyBehaviour { Behaviour::Answer };

private:
    static bool respond(const QDBusMessage& message, const QDBusConnection& connection, Behaviour behaviour,
        const std::function<QVariant()>& answer)
    {
        switch (behaviour) {
        case Behaviour::Answer:
            return connection.send(message.createReply(answer()));
        case Behaviour::Hang:
            return true;
        case Behaviour::Refuse:
            return connection.send(message.createErrorReply(
                QStringLiteral("org.freedesktop.DBus.Error.AccessDenied"), QStringLiteral("No.")));
        case Behaviour::Garble:
            return connection.send(message.createReply(QStringLiteral("garbled")));
        }
        return false;
    }

    [[nodiscard]] QList<ListedSession> listedSessions() const
    {
        QList<ListedSession> listed;
        for (const FakeSession& session : sessions)
            listed.append(
                { session.id, session.userId, session.userName, session.seat, QDBusObjectPath(pathOf(session)) });
        return listed;
    }

    static QVariant propertiesOf(const FakeSession& session)
    {
        return QVariantMap { { QStringLiteral("Id"), session.id }, { QStringLiteral("Class"), session.sessionClass },
            { QStringLiteral("State"), session.state }, { QStringLiteral("Remote"), session.seat.isEmpty() } };
    }
};

FakeLogind::FakeLogind(const QString& busAddress)
    : m_objects(std::make_unique<Objects>())
{
    qDBusRegisterMetaType<ListedSession>();
    qDBusRegisterMetaType<QList<ListedSession>>();
    m_objects->moveToThread(&m_thread);
    m_thread.start();
    onThread([&] {
        auto connection = QDBusConnection::connectToBus(busAddress, connectionName);
        m_registered = connection.registerVirtualObject(managerPath, m_objects.get(), QDBusConnection::SubPath)
            && connection.registerService(serviceName);
    });
}

FakeLogind::~FakeLogind()
{
    leave();
    m_thread.quit();
    m_thread.wait();
}

void FakeLogind::setSessions(QList<FakeSession> sessions)
{
    onThread([&] { m_objects->sessions = std::move(sessions); });
}

void FakeLogind::setListBehaviour(Behaviour behaviour)
{
    onThread([&] { m_objects->listBehaviour = behaviour; });
}

void FakeLogind::setPropertyBehaviour(Behaviour behaviour)
{
    onThread([&] { m_objects->propertyBehaviour = behaviour; });
}

void FakeLogind::leave()
{
    if (!std::exchange(m_registered, false))
        return;
    onThread([] {
        QDBusConnection(connectionName).unregisterService(serviceName);
        QDBusConnection::disconnectFromBus(connectionName);
    });
}

void FakeLogind::onThread(const std::function<void()>& task)
{
    QMetaObject::invokeMethod(m_objects.get(), task, Qt::BlockingQueuedConnection);
}
