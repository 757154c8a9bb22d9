#include "platform/registry/SilentServices.h"

#include "tests/platform/registry/RegistryFixture.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <gtest/gtest.h>

#include <atomic>

namespace {

using namespace std::chrono_literals;
using Double = SocketServiceDouble;

class SilentServicesTest : public RegistryFixture {
protected:
    SilentServicesTest()
        : service(startService(0, "card"))
    {
        const auto react = [this](const Double::Request&) { return hangs ? Double::silence() : Double::answer(); };
        service.onOpen(react);
        service.onScalarCall(
            [this](const Double::Request&) { return hangs || callsHang ? Double::silence() : Double::answer(); });
    }

    // Handles events until the service has been asked this often, and answered what it answers.
    void waitForProbes(std::size_t count)
    {
        while (service.requests().size() < count)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    void waitUntilAnswering()
    {
        while (silent.isSilent(location))
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }

    void advance(std::chrono::nanoseconds time) { now = now.load() + time; }

    SocketServiceDouble& service;
    std::atomic<bool> hangs { true };
    std::atomic<bool> callsHang { false };
    std::atomic<SilentServices::TimePoint> now { SilentServices::TimePoint(1h) };
    SilentServices silent { [this] { return now.load(); } };
    const ServiceLocation location { classDirectory(0), "card" };
};

TEST_F(SilentServicesTest, NoServiceIsSilentAtFirst)
{
    EXPECT_FALSE(silent.isSilent(location));
    EXPECT_TRUE(service.requests().empty());
}

TEST_F(SilentServicesTest, AServiceIsSilentAfterATimeoutUntilItAnswersAnOpen)
{
    silent.requestTimedOut(location);
    EXPECT_TRUE(silent.isSilent(location));
    waitForProbes(1);
    EXPECT_TRUE(silent.isSilent(location));
    EXPECT_EQ(service.requests(), (std::vector { Double::Request { 0, 0, 0, 0, {} } }));

    hangs = false;
    service.die();
    ASSERT_TRUE(service.start());
    waitUntilAnswering();
}

TEST_F(SilentServicesTest, AProbeThatIsNeverAnsweredIsFollowedByAnother)
{
    silent.requestTimedOut(location);
    waitForProbes(1);
    hangs = false; // the service answers again, but not what it was asked before
    advance(SilentServices::maxPendingTime - 1ms);
    EXPECT_TRUE(silent.isSilent(location));
    EXPECT_EQ(service.acceptedConnections(), 1);
    advance(1ms);
    EXPECT_TRUE(silent.isSilent(location));
    waitUntilAnswering();
}

// The poll of the ready flag does not return to the event loop.
TEST_F(SilentServicesTest, ARecoveryIsSeenWithoutTheEventLoop)
{
    hangs = false;
    silent.requestTimedOut(location);
    while (silent.isSilent(location)) { }
    SUCCEED();
}

TEST_F(SilentServicesTest, ASlowAnswerCountsAfterTheFirstTimeoutOnly)
{
    service.onOpen([this](const Double::Request&) {
        advance(SilentServices::maxFirstProbeTime);
        return Double::answer();
    });
    hangs = false;
    silent.requestTimedOut(location);
    waitUntilAnswering();
    silent.requestTimedOut(location);
    const std::size_t before = service.requests().size();
    waitForProbes(before + 3);
    EXPECT_TRUE(silent.isSilent(location));
}

TEST_F(SilentServicesTest, AnAnswerThatTookTooLongIsFollowedByAnotherProbe)
{
    service.onOpen([this](const Double::Request&) {
        advance(SilentServices::maxFirstProbeTime + 1ms);
        return Double::answer();
    });
    silent.requestTimedOut(location);
    waitForProbes(3);
    EXPECT_TRUE(silent.isSilent(location));
}

TEST_F(SilentServicesTest, OtherServicesAreNotSilent)
{
    silent.requestTimedOut(location);
    EXPECT_FALSE(silent.isSilent({ location.directory, "other" }));
}

TEST_F(SilentServicesTest, AServiceThatOpensButDoesNotCallIsProbedWithACompletionCall)
{
    hangs = false;
    callsHang = true;
    silent.requestTimedOut(location);
    waitUntilAnswering();
    silent.requestTimedOut(location);
    waitForProbes(3);
    EXPECT_TRUE(silent.isSilent(location));
    const auto requests = service.requests();
    EXPECT_EQ(requests.back(), (Double::Request { 2, 1, 0, 0, {} }));
}

TEST_F(SilentServicesTest, AServiceThatOnlyAnswersProbesIsLeftAloneBetweenThem)
{
    hangs = false;
    for (int timeout = 0; timeout < 2; ++timeout) {
        silent.requestTimedOut(location);
        waitUntilAnswering();
    }
    for (int round = 0; round < 4; ++round) {
        silent.requestTimedOut(location);
        const std::size_t before = service.requests().size();
        advance(SilentServices::pause - 1ms);
        EXPECT_TRUE(silent.isSilent(location));
        EXPECT_EQ(service.requests().size(), before);
        advance(1ms);
        waitUntilAnswering();
    }
}

TEST_F(SilentServicesTest, AnAnsweredRequestForgetsTheTimeouts)
{
    hangs = false;
    for (int round = 0; round < 5; ++round) {
        silent.requestTimedOut(location);
        waitUntilAnswering();
        silent.requestAnswered(location);
    }
    for (const Double::Request& request : service.requests())
        EXPECT_EQ(request.kind, 0u);
}

} // namespace
