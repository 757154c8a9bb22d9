// The loopback interface answers route netlink on every machine and for every user.

#include "services/linux/kernel/NetlinkRequests.h"

#include "services/linux/kernel/NetlinkEvents.h"
#include "services/linux/wire/LinkMessage.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <gtest/gtest.h>

#include <cerrno>

#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <net/if.h>

namespace {

class NetlinkRequestsTest : public testing::Test {
protected:
    void send(NetlinkMessage message)
    {
        requests.send(std::move(message), [this](const NetlinkResult& result) { results.push_back(result); });
    }
    bool waitFor(std::size_t count)
    {
        QElapsedTimer timer;
        timer.start();
        while (results.size() < count && timer.elapsed() < 5000)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        return results.size() >= count;
    }

    const std::uint32_t loopback { ::if_nametoindex("lo") };
    std::vector<NetlinkResult> results;
    NetlinkRequests requests { NETLINK_ROUTE };
};

} // namespace

TEST_F(NetlinkRequestsTest, AnswerComesFromTheEventLoop)
{
    send(NetlinkMessage::link(RTM_GETLINK, 0, loopback));
    EXPECT_TRUE(results.empty());
    ASSERT_TRUE(waitFor(1));
    EXPECT_EQ(results.front().error, 0);
    ASSERT_EQ(results.front().bodies.size(), 1U);
    const auto link = linkMessage(results.front().bodies.front());
    ASSERT_TRUE(link);
    EXPECT_EQ(link->name, "lo");
    EXPECT_TRUE(link->counters);
}

TEST_F(NetlinkRequestsTest, DumpHasEveryMessage)
{
    send(NetlinkMessage::link(RTM_GETLINK, NLM_F_DUMP, 0));
    ASSERT_TRUE(waitFor(1));
    EXPECT_EQ(results.front().error, 0);
    EXPECT_GE(results.front().bodies.size(), 1U);
}

TEST_F(NetlinkRequestsTest, RefusalIsAnError)
{
    send(NetlinkMessage::link(RTM_GETLINK, 0, 0x7FFFFFF0));
    ASSERT_TRUE(waitFor(1));
    EXPECT_EQ(results.front().error, ENODEV);
    EXPECT_TRUE(results.front().bodies.empty());
}

TEST_F(NetlinkRequestsTest, ManyRequestsAreAnsweredInOrder)
{
    for (int i = 0; i < 5; ++i)
        send(NetlinkMessage::link(RTM_GETLINK, 0, i % 2 == 0 ? loopback : 0x7FFFFFF0));
    ASSERT_TRUE(waitFor(5));
    for (std::size_t i = 0; i < 5; ++i)
        EXPECT_EQ(results[i].error, i % 2 == 0 ? 0 : ENODEV) << i;
}

TEST_F(NetlinkRequestsTest, TooManyRequestsFailBeforeTheOthers)
{
    for (std::size_t i = 0; i < NetlinkRequests::maxQueued; ++i)
        send(NetlinkMessage::link(RTM_GETLINK, 0, loopback));
    EXPECT_TRUE(results.empty());
    send(NetlinkMessage::link(RTM_GETLINK, 0, loopback));
    EXPECT_TRUE(results.empty()); // from the event loop, as every answer
    ASSERT_TRUE(waitFor(1));
    EXPECT_EQ(results.front().error, EAGAIN);
    EXPECT_TRUE(waitFor(NetlinkRequests::maxQueued + 1));
}

TEST_F(NetlinkRequestsTest, NothingIsCalledBackAfterItsEnd)
{
    bool isCalled = false;
    {
        NetlinkRequests shortLived(NETLINK_ROUTE);
        shortLived.send(NetlinkMessage::link(RTM_GETLINK, 0, loopback), [&isCalled](const auto&) { isCalled = true; });
    }
    QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
    EXPECT_FALSE(isCalled);
}

TEST(GenericFamily, IsFoundByItsName)
{
    EXPECT_EQ(GenericFamily::resolve("nlctrl").id, 16);
    EXPECT_LT(GenericFamily::resolve("no-such-family").id, 0);
    EXPECT_LT(GenericFamily::group("nlctrl", "no-such-group"), 0);
}

TEST(NetlinkEvents, ListeningToAnImpossibleGroupIsAnError)
{
    NetlinkEvents events([](const NetlinkReply&) {}, [] {});
    EXPECT_FALSE(events.listen(NETLINK_ROUTE, { RTNLGRP_LINK }));
    EXPECT_TRUE(events.listen(NETLINK_ROUTE, { 10'000 }));
}

TEST_F(NetlinkRequestsTest, EndlessAnswerIsAnErrorAndTheNextRequestWorks)
{
    NetlinkRequests limited(NETLINK_ROUTE, 100);
    const auto store = [this](const NetlinkResult& result) { results.push_back(result); };
    limited.send(NetlinkMessage::link(RTM_GETLINK, NLM_F_DUMP, 0), store);
    limited.send(NetlinkMessage::link(RTM_GETLINK, 0, 0x7FFFFFF0), store);
    ASSERT_TRUE(waitFor(2));
    EXPECT_EQ(results[0].error, EMSGSIZE);
    EXPECT_TRUE(results[0].bodies.empty());
    EXPECT_EQ(results[1].error, ENODEV);
}
