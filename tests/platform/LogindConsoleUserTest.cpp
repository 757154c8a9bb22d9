#include "platform/LogindConsoleUser.h"

#include "tests/platform/FakeLogind.h"
#include "tests/support/RecordingTickClock.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>

#include <pwd.h>
#include <unistd.h>

namespace {

using namespace std::chrono_literals;
using Behaviour = FakeLogind::Behaviour;

class LogindConsoleUserTest : public testing::Test {
protected:
    static constexpr std::chrono::milliseconds shortTimeout { 100 };

    static void SetUpTestSuite() { bus = std::make_unique<PrivateBus>(); }
    static void TearDownTestSuite() { bus.reset(); }

    void SetUp() override { ASSERT_FALSE(bus->address().isEmpty()) << "dbus-daemon did not start"; }

    void TearDown() override { QDBusConnection::disconnectFromBus(clientName); }

    void startLogind(QList<FakeSession> sessions)
    {
        logind = std::make_unique<FakeLogind>(bus->address());
        ASSERT_TRUE(logind->isRegistered());
        logind->setSessions(std::move(sessions));
    }

    [[nodiscard]] std::optional<QString> consoleUser(std::chrono::milliseconds timeout = 5s) const
    {
        const auto connection = QDBusConnection::connectToBus(bus->address(), clientName);
        EXPECT_TRUE(connection.isConnected());
        return LogindConsoleUser(connection, timeout).CopyCurrentConsoleUsername();
    }

    static inline std::unique_ptr<PrivateBus> bus;
    const QString clientName = QStringLiteral("client");
    std::unique_ptr<FakeLogind> logind;
};

const QString seat = QStringLiteral("seat0");

FakeSession session(const QString& id, const QString& userName, const QString& atSeat)
{
    return { .id = id, .userName = userName, .seat = atSeat };
}

TEST_F(LogindConsoleUserTest, IsUserOfActiveSession)
{
    startLogind({ session(u"c1"_qs, u"mona"_qs, seat) });
    EXPECT_EQ(consoleUser(), u"mona"_qs);
}

TEST_F(LogindConsoleUserTest, IsMissingWithoutSession)
{
    startLogind({});
    EXPECT_EQ(consoleUser(), std::nullopt);
}

TEST_F(LogindConsoleUserTest, IsMissingWithoutActiveSession)
{
    QList<FakeSession> sessions;
    for (const QString& state : { u"online"_qs, u"opening"_qs, u"closing"_qs, u""_qs }) {
        sessions.append(session(u"s"_qs + QString::number(sessions.size()), u"mona"_qs, seat));
        sessions.last().state = state;
    }
    startLogind(sessions);
    EXPECT_EQ(consoleUser(), std::nullopt);
}

TEST_F(LogindConsoleUserTest, IgnoresSessionsOfOtherClasses)
{
    QList<FakeSession> sessions;
    for (const QString& sessionClass : { u"greeter"_qs, u"lock-screen"_qs, u"background"_qs, u"background-light"_qs,
             u"manager"_qs, u"manager-early"_qs, u"user-incomplete"_qs, u"none"_qs, u""_qs }) {
        sessions.append(session(u"s"_qs + QString::number(sessions.size()), u"gdm"_qs, seat));
        sessions.last().sessionClass = sessionClass;
    }
    startLogind(sessions);
    EXPECT_EQ(consoleUser(), std::nullopt);
}

TEST_F(LogindConsoleUserTest, AcceptsEveryUserClass)
{
    startLogind({});
    for (const QString& sessionClass : { u"user"_qs, u"user-early"_qs, u"user-light"_qs, u"user-early-light"_qs }) {
        FakeSession person = session(u"c1"_qs, u"mona"_qs, seat);
        person.sessionClass = sessionClass;
        logind->setSessions({ person });
        EXPECT_EQ(consoleUser(), u"mona"_qs) << sessionClass.toStdString();
    }
}

TEST_F(LogindConsoleUserTest, PrefersSessionAtSeatToRemoteOne)
{
    startLogind({ session(u"s1"_qs, u"remote"_qs, {}) });
    EXPECT_EQ(consoleUser(), u"remote"_qs);
    logind->setSessions({ session(u"s1"_qs, u"remote"_qs, {}), session(u"s2"_qs, u"local"_qs, seat),
        session(u"s3"_qs, u"other"_qs, seat) });
    EXPECT_EQ(consoleUser(), u"local"_qs);
}

TEST_F(LogindConsoleUserTest, SkipsSessionsThatDoNotQualify)
{
    FakeSession greeter = session(u"c1"_qs, u"gdm"_qs, seat);
    greeter.sessionClass = u"greeter"_qs;
    FakeSession inactive = session(u"s2"_qs, u"otto"_qs, seat);
    inactive.state = u"online"_qs;
    FakeSession ended = session(u"s3"_qs, u"eve"_qs, seat);
    ended.ended = true;
    startLogind({ greeter, inactive, ended, session(u"s4"_qs, u"mona"_qs, seat) });
    EXPECT_EQ(consoleUser(), u"mona"_qs);
}

TEST_F(LogindConsoleUserTest, IsUserIdWithoutName)
{
    FakeSession nameless = session(u"c1"_qs, {}, seat);
    nameless.userId = 4711;
    startLogind({ nameless });
    EXPECT_EQ(consoleUser(), u"4711"_qs);
}

TEST_F(LogindConsoleUserTest, IsProcessOwnerWithoutLogind)
{
    EXPECT_EQ(consoleUser(), processOwnerName());
}

TEST_F(LogindConsoleUserTest, IsProcessOwnerAfterLogindHasStopped)
{
    startLogind({});
    EXPECT_EQ(consoleUser(), std::nullopt);
    logind->leave();
    EXPECT_EQ(consoleUser(), processOwnerName());
}

TEST_F(LogindConsoleUserTest, IsProcessOwnerWithoutBus)
{
    const auto none = QDBusConnection::connectToBus(QStringLiteral("unix:path=/nowhere/bus"), QStringLiteral("noBus"));
    EXPECT_FALSE(none.isConnected());
    EXPECT_EQ(LogindConsoleUser(none).CopyCurrentConsoleUsername(), processOwnerName());
    QDBusConnection::disconnectFromBus(QStringLiteral("noBus"));
}

TEST_F(LogindConsoleUserTest, IsProcessOwnerAfterBusHasStopped)
{
    PrivateBus shortLived;
    const auto connection = QDBusConnection::connectToBus(shortLived.address(), clientName);
    ASSERT_TRUE(connection.isConnected());
    shortLived.stop();
    EXPECT_EQ(LogindConsoleUser(connection, shortTimeout).CopyCurrentConsoleUsername(), processOwnerName());
}

TEST_F(LogindConsoleUserTest, IsMissingWhileLogindDoesNotAnswer)
{
    startLogind({ session(u"c1"_qs, u"mona"_qs, seat) });
    for (const Behaviour behaviour : { Behaviour::Hang, Behaviour::Refuse, Behaviour::Garble }) {
        logind->setListBehaviour(behaviour);
        const auto begin = std::chrono::steady_clock::now();
        EXPECT_EQ(consoleUser(shortTimeout), std::nullopt);
        EXPECT_LT(std::chrono::steady_clock::now() - begin, 3s);
    }
    logind->setListBehaviour(Behaviour::Answer);
    for (const Behaviour behaviour : { Behaviour::Hang, Behaviour::Refuse, Behaviour::Garble }) {
        logind->setPropertyBehaviour(behaviour);
        EXPECT_EQ(consoleUser(shortTimeout), std::nullopt);
    }
    logind->setPropertyBehaviour(Behaviour::Answer);
    EXPECT_EQ(consoleUser(), u"mona"_qs);
}

TEST_F(LogindConsoleUserTest, IsWaitedForAtLoginWindow)
{
    FakeSession greeter = session(u"c1"_qs, u"gdm"_qs, seat);
    greeter.sessionClass = u"greeter"_qs;
    startLogind({ greeter });
    LogindConsoleUser consoleUser(QDBusConnection::connectToBus(bus->address(), clientName));
    RecordingTickClock clock;
    clock.onDelay = [&](auto) {
        if (clock.delays.size() == 3)
            logind->setSessions({ session(u"c2"_qs, u"mona"_qs, seat) });
    };
    testing::internal::CaptureStdout();
    waitForConsoleUser(consoleUser, clock);
    EXPECT_EQ(
        testing::internal::GetCapturedStdout(), "Current User: \tCurrent User: \tCurrent User: \tCurrent User: \t");
    EXPECT_EQ(clock.delays, (std::vector<std::uint32_t> { 3, 3, 3 }));
}

TEST(ProcessOwnerName, IsNameOrIdOfEffectiveUser)
{
    const passwd* const entry = ::getpwuid(::geteuid());
    EXPECT_EQ(
        processOwnerName(), entry != nullptr ? QString::fromLocal8Bit(entry->pw_name) : QString::number(::geteuid()));
    if (::geteuid() != 0)
        return; // only root can change the effective user
    constexpr uid_t nameless = 3999999991;
    ASSERT_EQ(::getpwuid(nameless), nullptr);
    ASSERT_EQ(::seteuid(nameless), 0);
    const QString name = processOwnerName();
    ASSERT_EQ(::seteuid(0), 0);
    EXPECT_EQ(name, u"3999999991"_qs);
}

} // namespace
