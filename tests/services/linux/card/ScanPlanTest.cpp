#include "services/linux/card/ScanPlan.h"

#include <gtest/gtest.h>

namespace {

using Frequencies = std::vector<std::uint32_t>;

std::vector<ChannelFacts> channels(const Frequencies& frequencies, bool isPassive = false)
{
    std::vector<ChannelFacts> facts;
    for (const std::uint32_t frequency : frequencies)
        facts.push_back({ frequency, 2000, false, isPassive });
    return facts;
}

Frequencies range(std::uint32_t first, std::uint32_t count)
{
    Frequencies frequencies;
    for (std::uint32_t i = 0; i < count; ++i)
        frequencies.push_back(first + 20 * i);
    return frequencies;
}

} // namespace

TEST(ScanPlan, FirstBatchFitsIntoTheClientsWait)
{
    ScanPlan plan;
    plan.start(channels(range(5180, 40)), {}, false);
    EXPECT_EQ(plan.batch().frequenciesMhz.size(), 18U); // 85 ms each
    plan.start(channels(range(5180, 40), true), {}, false);
    EXPECT_EQ(plan.batch().frequenciesMhz.size(), 11U); // 145 ms each
    plan.start(channels(range(5180, 40)), {}, true);
    EXPECT_EQ(plan.batch().frequenciesMhz.size(), 8U); // and back to the link's channel
}

TEST(ScanPlan, ChannelsWithKnownNetworksComeFirstThenTheOldest)
{
    ScanPlan plan;
    plan.start(channels({ 5180, 5200, 5220 }), {}, false);
    plan.scanned({ 5180 }, 5000);
    plan.scanned({ 5200 }, 1000);
    plan.scanned({ 5220 }, 3000);
    EXPECT_TRUE(plan.isDone());
    plan.start(channels({ 5180, 5200, 5220 }), { { 5220 }, {} }, false);
    EXPECT_EQ(plan.batch().frequenciesMhz, (Frequencies { 5220, 5200, 5180 }));
}

TEST(ScanPlan, KnownNetworksDoNotKeepOtherChannelsFromBeingScannedForEver)
{
    ScanPlan plan;
    plan.start(channels({ 5180, 5200 }), {}, false);
    plan.scanned({ 5180 }, 20'000);
    plan.scanned({ 5200 }, 1000);
    plan.start(channels({ 5180, 5200 }), { { 5180 }, {} }, false);
    EXPECT_EQ(plan.batch().frequenciesMhz.front(), 5200U);
}

TEST(ScanPlan, ListensWhereHiddenNetworksAre)
{
    ScanPlan plan;
    plan.start(channels({ 2412, 2437 }), { { 2437 }, { 2437 } }, true);
    ScanBatch batch = plan.batch();
    EXPECT_TRUE(batch.isListening);
    EXPECT_EQ(batch.frequenciesMhz, (Frequencies { 2437 }));
    plan.scanned(batch.frequenciesMhz, 0);
    batch = plan.batch();
    EXPECT_FALSE(batch.isListening);
    EXPECT_EQ(batch.frequenciesMhz, (Frequencies { 2412 }));
    plan.scanned(batch.frequenciesMhz, 0);
    EXPECT_TRUE(plan.isDone());
}

TEST(ScanPlan, ListensToTheLowBandInTheEndUnlessLinked)
{
    ScanPlan plan;
    plan.start(channels({ 2412, 5180 }), {}, false);
    plan.scanned(plan.batch().frequenciesMhz, 0);
    EXPECT_FALSE(plan.isDone());
    EXPECT_TRUE(plan.batch().isListening);
    EXPECT_EQ(plan.batch().frequenciesMhz, (Frequencies { 2412 }));
    plan.start(channels({ 2412, 5180 }), {}, true);
    plan.scanned(plan.batch().frequenciesMhz, 0);
    EXPECT_TRUE(plan.isDone());
}

TEST(ScanPlan, EmptyPlanHasNoBatch)
{
    ScanPlan plan;
    EXPECT_TRUE(plan.batch().frequenciesMhz.empty());
    plan.start(channels({ 2412 }), {}, false);
    plan.cancel();
    EXPECT_TRUE(plan.isDone());
}
