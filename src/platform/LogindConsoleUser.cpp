#include "platform/LogindConsoleUser.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QFile>
#include <QVariantMap>

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>
#include <vector>

#include <pwd.h>
#include <unistd.h>

namespace {

// One entry of ListSessions, D-Bus type (susso).
struct Session {
    QString id;
    quint32 userId { 0 };
    QString userName;
    QString seat; // empty for a remote session
    QDBusObjectPath path;
};

std::vector<Session> sessionsOf(const QDBusMessage& reply)
{
    std::vector<Session> sessions;
    if (reply.type() != QDBusMessage::ReplyMessage || reply.signature() != QLatin1String("a(susso)"))
        return sessions;
    const QDBusArgument list = reply.arguments().constFirst().value<QDBusArgument>();
    list.beginArray();
    while (!list.atEnd()) {
        Session session;
        list.beginStructure();
        list >> session.id >> session.userId >> session.userName >> session.seat >> session.path;
        list.endStructure();
        sessions.push_back(std::move(session));
    }
    list.endArray();
    return sessions;
}

// The session classes of logged-in users. Excludes greeters, lock screens, managers and background jobs, and
// "user-incomplete", whose login may still fail.
bool isUserClass(const QString& sessionClass)
{
    static constexpr std::array classes { "user", "user-early", "user-light", "user-early-light" };
    return std::any_of(
        classes.begin(), classes.end(), [&](const char* known) { return sessionClass == QLatin1String(known); });
}

QDBusMessage methodCall(const QString& path, const QString& interface, const QString& method)
{
    return QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.login1"), path, interface, method);
}

} // namespace

LogindConsoleUser::LogindConsoleUser(QDBusConnection systemBus, std::chrono::milliseconds callTimeout)
    : m_bus(std::move(systemBus))
    , m_callTimeoutMs(static_cast<int>(callTimeout.count()))
{
}

std::optional<QString> LogindConsoleUser::SCDynamicStoreCopyConsoleUser()
{
    const QDBusMessage reply = call(methodCall(QStringLiteral("/org/freedesktop/login1"),
        QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("ListSessions")));
    if (reply.type() == QDBusMessage::ReplyMessage)
        return activeUser(reply);
    // The call activates logind if possible, so if it is not running now, the system does not use it.
    return isLogindRunning() ? std::nullopt : std::optional(processOwnerName());
}

std::optional<QString> LogindConsoleUser::activeUser(const QDBusMessage& sessionList) const
{
    std::vector<Session> sessions = sessionsOf(sessionList);
    std::stable_partition(
        sessions.begin(), sessions.end(), [](const Session& session) { return !session.seat.isEmpty(); });
    for (const Session& session : sessions) {
        if (isActiveUserSession(session.path.path()))
            return session.userName.isEmpty() ? QString::number(session.userId) : session.userName;
    }
    return std::nullopt;
}

// False for a session that has ended since it was listed: its object no longer exists.
bool LogindConsoleUser::isActiveUserSession(const QString& sessionPath) const
{
    QDBusMessage getAll
        = methodCall(sessionPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("GetAll"));
    getAll << QStringLiteral("org.freedesktop.login1.Session");
    const QDBusMessage reply = call(getAll);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.signature() != QLatin1String("a{sv}"))
        return false;
    const auto properties = qdbus_cast<QVariantMap>(reply.arguments().constFirst());
    return isUserClass(properties.value(QStringLiteral("Class")).toString())
        && properties.value(QStringLiteral("State")).toString() == QLatin1String("active");
}

bool LogindConsoleUser::isLogindRunning() const
{
    QDBusMessage hasOwner = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
        QStringLiteral("/org/freedesktop/DBus"), QStringLiteral("org.freedesktop.DBus"),
        QStringLiteral("NameHasOwner"));
    hasOwner << QStringLiteral("org.freedesktop.login1");
    const QDBusMessage reply = call(hasOwner);
    return reply.type() == QDBusMessage::ReplyMessage && reply.signature() == QLatin1String("b")
        && reply.arguments().constFirst().toBool();
}

QDBusMessage LogindConsoleUser::call(const QDBusMessage& message) const
{
    return m_bus.call(message, QDBus::Block, m_callTimeoutMs);
}

QString processOwnerName()
{
    std::array<char, 4096> text {};
    passwd entry {};
    passwd* found = nullptr;
    const uid_t user = ::geteuid();
    if (::getpwuid_r(user, &entry, text.data(), text.size(), &found) == 0 && found != nullptr && *entry.pw_name != '\0')
        return QFile::decodeName(entry.pw_name);
    return QString::number(user);
}
