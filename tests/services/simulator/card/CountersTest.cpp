#include "services/simulator/card/Counters.h"

#include "tests/services/simulator/card/CardUnderTest.h"

#include <gtest/gtest.h>

namespace {

void run(Counters& counters, const std::optional<LinkCondition>& link, int seconds)
{
    static constexpr std::int64_t start = 5000;
    for (std::int64_t i = 0; i <= seconds; ++i)
        counters.advance(start + i * 1000, link);
}

NDIS_802_11_STATISTICS statisticsAt(std::int32_t signalDbm)
{
    Counters counters(1);
    run(counters, LinkCondition { 22, signalDbm }, 300);
    return counters.statistics();
}

} // namespace

TEST(Counters, DoNotMoveWithoutALink)
{
    Counters counters(1);
    run(counters, std::nullopt, 100);
    EXPECT_EQ(counters.transmittedBytes(), 0U);
    EXPECT_EQ(counters.receivedBytes(), 0U);
    EXPECT_EQ(valueOf(counters.statistics().ReceivedFragmentCount), 0);
    EXPECT_EQ(valueOf(counters.statistics().Length), 100U);
}

TEST(Counters, FirstAdvanceCountsNothing)
{
    Counters counters(1);
    counters.advance(1'000'000, LinkCondition { 108, -50 });
    EXPECT_EQ(counters.receivedBytes(), 0U);
}

TEST(Counters, CountNoTrafficWithoutPeers)
{
    Counters counters(1);
    run(counters, LinkCondition { 108, -50, false }, 100);
    EXPECT_EQ(counters.receivedBytes(), 0U);
}

TEST(Counters, TrafficStaysBelowTheLinkRate)
{
    for (const std::uint32_t rate : { 2U, 22U, 108U }) {
        Counters counters(1);
        run(counters, LinkCondition { rate, -60 }, 100);
        const double linkBytes = rate * 500'000.0 / 8.0 * 100.0;
        EXPECT_GT(counters.receivedBytes(), 0U);
        EXPECT_GT(counters.receivedBytes(), counters.transmittedBytes());
        EXPECT_LT(counters.receivedBytes() + counters.transmittedBytes(), linkBytes / 2);
    }
}

TEST(Counters, WeakSignalCausesRetriesAndErrors)
{
    const NDIS_802_11_STATISTICS strong = statisticsAt(-50);
    const NDIS_802_11_STATISTICS weak = statisticsAt(-88);
    EXPECT_GT(valueOf(weak.RetryCount), valueOf(strong.RetryCount));
    EXPECT_GT(valueOf(weak.FailedCount), valueOf(strong.FailedCount));
    EXPECT_GT(valueOf(weak.FCSErrorCount), valueOf(strong.FCSErrorCount));
    EXPECT_LE(valueOf(weak.RetryCount), valueOf(weak.TransmittedFragmentCount));
    EXPECT_GE(valueOf(weak.ACKFailureCount), valueOf(weak.RetryCount));
}

TEST(Counters, CountRtsFramesOnlyBelowTheThreshold)
{
    EXPECT_EQ(valueOf(statisticsAt(-60).RTSSuccessCount), 0);
    Counters counters(1);
    run(counters, LinkCondition { 108, -60, true, 500 }, 100);
    EXPECT_GT(valueOf(counters.statistics().RTSSuccessCount), 0);
    EXPECT_LT(valueOf(counters.statistics().RTSFailureCount), valueOf(counters.statistics().RTSSuccessCount));
}

TEST(Counters, ResetClearsFramesButNotBytes)
{
    Counters counters(1);
    run(counters, LinkCondition { 108, -60 }, 100);
    const std::uint32_t bytes = counters.receivedBytes();
    EXPECT_GT(counters.receivedFrames(), 0U);
    counters.reset();
    EXPECT_EQ(counters.receivedFrames(), 0U);
    EXPECT_EQ(counters.framesWithoutBuffer(), 0U);
    EXPECT_EQ(valueOf(counters.statistics().TransmittedFragmentCount), 0);
    EXPECT_EQ(counters.receivedBytes(), bytes);
}

TEST(Counters, CountNothingIfTheClockStopsOrGoesBack)
{
    Counters counters(1);
    run(counters, LinkCondition { 108, -60 }, 10);
    const std::uint32_t bytes = counters.receivedBytes();
    counters.advance(15'000, LinkCondition { 108, -60 });
    counters.advance(1, LinkCondition { 108, -60 });
    EXPECT_EQ(counters.receivedBytes(), bytes);
}
