#include "monitor/LinkHistory.h"

#include <gtest/gtest.h>

namespace {

LinkSample sampleOf(std::uint32_t percent)
{
    return { percent, percent, std::nullopt, std::nullopt };
}

TEST(LinkHistory, CoversFiveMinutes)
{
    EXPECT_EQ(LinkHistory::spanSeconds, 300);
}

TEST(LinkHistory, IsInitiallyEmpty)
{
    const LinkHistory history;
    EXPECT_EQ(history.size(), 0U);
    EXPECT_FALSE(history.hasSamples());
    EXPECT_EQ(history.at(0), std::nullopt);
    EXPECT_EQ(history.maxThroughputKbps(), 0U);
}

TEST(LinkHistory, IsIndexedByAge)
{
    LinkHistory history;
    history.append(sampleOf(1));
    history.append(sampleOf(2));
    history.append(std::nullopt);
    EXPECT_EQ(history.size(), 3U);
    EXPECT_EQ(history.at(0), std::nullopt);
    EXPECT_EQ(history.at(1), sampleOf(2));
    EXPECT_EQ(history.at(2), sampleOf(1));
    EXPECT_EQ(history.at(3), std::nullopt);
    EXPECT_TRUE(history.hasSamples());
}

TEST(LinkHistory, DropsTheOldestSampleWhenFull)
{
    LinkHistory history;
    for (std::uint32_t number = 0; number <= LinkHistory::capacity; ++number)
        history.append(sampleOf(number));
    EXPECT_EQ(history.size(), LinkHistory::capacity);
    EXPECT_EQ(history.at(0), sampleOf(LinkHistory::capacity));
    EXPECT_EQ(history.at(LinkHistory::capacity - 1), sampleOf(1));
    EXPECT_EQ(history.at(LinkHistory::capacity), std::nullopt);
}

TEST(LinkHistory, HasNoSamplesWhenFullOfGaps)
{
    LinkHistory history;
    history.append(sampleOf(50));
    for (std::size_t tick = 1; tick < LinkHistory::capacity; ++tick)
        history.append(std::nullopt);
    EXPECT_TRUE(history.hasSamples());
    history.append(std::nullopt);
    EXPECT_FALSE(history.hasSamples());
    EXPECT_EQ(history.size(), LinkHistory::capacity);
}

TEST(LinkHistory, FindsTheMaximumOfBothThroughputs)
{
    LinkHistory history;
    history.append(LinkSample { 1, 1, 300, 20 });
    history.append(LinkSample { 1, 1, 5, 700 });
    history.append(std::nullopt);
    history.append(LinkSample { 1, 1, std::nullopt, 30 });
    EXPECT_EQ(history.maxThroughputKbps(), 700U);
}

TEST(PlausibleKbps, RejectsThroughputsAboveTheMaximumLinkRate)
{
    EXPECT_EQ(plausibleKbps(0), 0U);
    EXPECT_EQ(plausibleKbps(maxLinkKbps), maxLinkKbps);
    EXPECT_EQ(plausibleKbps(maxLinkKbps + 1), std::nullopt);
    EXPECT_EQ(plausibleKbps(17179868), std::nullopt); // from a reset counter
}

} // namespace
