#include "services/linux/wire/LinkMessage.h"

#include "tests/services/linux/wire/AttributeBuilder.h"

#include <gtest/gtest.h>

#include <linux/if_link.h>
#include <linux/rtnetlink.h>
#include <net/if.h>

namespace {

Bytes linkBody(const AttributeBuilder& attributes)
{
    ifinfomsg head {};
    head.ifi_index = 7;
    head.ifi_flags = IFF_UP;
    Bytes body = bytesOf(head);
    body.insert(body.end(), attributes.bytes().begin(), attributes.bytes().end());
    return body;
}

} // namespace

TEST(LinkMessage, HasNameAndCounters)
{
    rtnl_link_stats64 stats {};
    stats.rx_packets = 5;
    stats.rx_bytes = std::uint64_t { 1 } << 33;
    stats.tx_bytes = 9;
    stats.rx_missed_errors = 2;
    stats.rx_fifo_errors = 3;
    const auto link
        = linkMessage(linkBody(AttributeBuilder().text(IFLA_IFNAME, "wlan0").add(IFLA_STATS64, bytesOf(stats))));
    ASSERT_TRUE(link);
    EXPECT_EQ(link->index, 7U);
    EXPECT_TRUE(link->isUp);
    EXPECT_EQ(link->name, "wlan0");
    ASSERT_TRUE(link->counters);
    EXPECT_EQ(link->counters->receivedFrames, 5U);
    EXPECT_EQ(link->counters->receivedBytes, std::uint64_t { 1 } << 33);
    EXPECT_EQ(link->counters->transmittedBytes, 9U);
    EXPECT_EQ(link->counters->framesWithoutBuffer, 5U);
}

TEST(LinkMessage, CountersOfAnOlderKernelAreShorter)
{
    Bytes stats(offsetof(rtnl_link_stats64, rx_missed_errors) + sizeof(std::uint64_t));
    EXPECT_TRUE(linkMessage(linkBody(AttributeBuilder().add(IFLA_STATS64, stats)))->counters);
    stats.pop_back();
    EXPECT_FALSE(linkMessage(linkBody(AttributeBuilder().add(IFLA_STATS64, stats)))->counters);
}

TEST(LinkMessage, NeedsItsHead)
{
    EXPECT_FALSE(linkMessage({}));
    EXPECT_FALSE(linkMessage(Bytes(sizeof(ifinfomsg) - 1)));
}
