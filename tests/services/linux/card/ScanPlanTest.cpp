#include "services/linux/card/ScanPlan.h"

#include <gtest/gtest.h>

namespace {

constexpr std::int64_t nowMs = 1'000'000;

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

// Scans all batches; returns them.
std::vector<ScanBatch> scanAll(ScanPlan& plan, std::int64_t nowMs)
{
    std::vector<ScanBatch> batches;
    while (!plan.isDone()) {
        batches.push_back(plan.batch());
        plan.scanned(batches.back().frequenciesMhz, nowMs);
    }
    return batches;
}

} // namespace

TEST(ScanPlan, FirstBatchFitsIntoTheClientsWait)
{
    ScanPlan plan;
    plan.start(channels(range(5180, 40)), {}, false, nowMs);
    EXPECT_EQ(plan.batch().frequenciesMhz.size(), 18U); // 85 ms each
    plan.start(channels(range(5180, 40), true), {}, false, nowMs);
    EXPECT_EQ(plan.batch().frequenciesMhz.size(), 11U); // 145 ms each
    plan.start(channels(range(5180, 40)), {}, true, nowMs);
    EXPECT_EQ(plan.batch().frequenciesMhz.size(), 8U); // and back to the link's channel
}

TEST(ScanPlan, ChannelsWithKnownNetworksComeFirstThenTheOldest)
{
    ScanPlan plan;
    plan.start(channels({ 5180, 5200, 5220 }, true), {}, false, nowMs);
    plan.scanned({ 5180 }, nowMs - 1000);
    plan.scanned({ 5200 }, nowMs - 5000);
    plan.scanned({ 5220 }, nowMs - 3000);
    plan.start(channels({ 5180, 5200, 5220 }, true), { { 5220 }, {} }, false, nowMs);
    EXPECT_EQ(plan.batch().frequenciesMhz, (Frequencies { 5220, 5200, 5180 }));
}

TEST(ScanPlan, KnownNetworksDoNotKeepOtherChannelsFromBeingScannedForEver)
{
    ScanPlan plan;
    plan.start(channels({ 5180, 5200 }, true), {}, false, nowMs);
    plan.scanned({ 5180 }, 20'000);
    plan.scanned({ 5200 }, 1000);
    plan.start(channels({ 5180, 5200 }, true), { { 5180 }, {} }, false, nowMs);
    EXPECT_EQ(plan.batch().frequenciesMhz.front(), 5200U);
}

TEST(ScanPlan, ListensWhereHiddenNetworksAreAndOnlyThereInTheFirstBatch)
{
    ScanPlan plan;
    plan.start(channels({ 2412, 2437 }), { { 2437 }, { 2437 } }, false, nowMs);
    const auto batches = scanAll(plan, nowMs);
    ASSERT_EQ(batches.size(), 3U);
    EXPECT_TRUE(batches[0].isListening);
    EXPECT_EQ(batches[0].frequenciesMhz, (Frequencies { 2437 }));
    EXPECT_FALSE(batches[1].isListening);
    EXPECT_EQ(batches[1].frequenciesMhz, (Frequencies { 2412 }));
    EXPECT_TRUE(batches[2].isListening);
    EXPECT_EQ(batches[2].frequenciesMhz, (Frequencies { 2412 }));
}

TEST(ScanPlan, ListensToEveryChannelAfterTheOthersWereScanned)
{
    ScanPlan plan;
    plan.start(channels({ 2412, 5180 }), {}, false, nowMs);
    const auto batches = scanAll(plan, nowMs);
    ASSERT_EQ(batches.size(), 2U);
    EXPECT_FALSE(batches[0].isListening);
    EXPECT_TRUE(batches[1].isListening);
    EXPECT_EQ(batches[1].frequenciesMhz, (Frequencies { 2412, 5180 }));
    plan.start(channels({ 5260 }, true), {}, false, nowMs);
    EXPECT_EQ(scanAll(plan, nowMs).size(), 1U); // every scan of such a channel listens
}

TEST(ScanPlan, ListensSometimeAlthoughTheClientAlwaysStartsOver)
{
    ScanPlan plan;
    int listened = 0;
    for (std::int64_t time = nowMs; time < nowMs + 30'000; time += 2000) {
        plan.start(channels(range(5180, 30)), {}, false, time);
        const ScanBatch batch = plan.batch();
        plan.scanned(batch.frequenciesMhz, time + 1700);
        listened += batch.isListening ? 1 : 0;
    }
    EXPECT_GE(listened, 3);
    EXPECT_LE(listened, 9);
}

TEST(ScanPlan, ListensSeldomWhileLinked)
{
    ScanPlan plan;
    plan.start(channels({ 2412 }), {}, true, nowMs);
    EXPECT_EQ(scanAll(plan, nowMs).size(), 2U);
    plan.start(channels({ 2412 }), {}, true, nowMs + ScanPlan::listenPauseMs - 1);
    EXPECT_EQ(scanAll(plan, nowMs).size(), 1U);
    plan.start(channels({ 2412 }), {}, true, nowMs + ScanPlan::listenPauseMs);
    EXPECT_EQ(scanAll(plan, nowMs).size(), 2U);
}

TEST(ScanPlan, ScanOfAnotherProgramHasNotListened)
{
    ScanPlan plan;
    plan.start(channels({ 2412 }), { {}, { 2412 } }, false, nowMs);
    EXPECT_TRUE(plan.batch().isListening);
    plan.failed(); // the kernel is busy with the other scan
    plan.scanned({ 2412 }, nowMs);
    EXPECT_FALSE(plan.isDone());
}

TEST(ScanPlan, EmptyPlanHasNoBatch)
{
    ScanPlan plan;
    EXPECT_TRUE(plan.batch().frequenciesMhz.empty());
    plan.start(channels({ 2412 }), {}, false, nowMs);
    plan.cancel();
    EXPECT_TRUE(plan.isDone());
}
