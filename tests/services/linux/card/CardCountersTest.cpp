#include "services/linux/card/CardCounters.h"

#include "tests/services/card/RequestRecords.h"

#include <gtest/gtest.h>

namespace {

StationInfo station(std::uint8_t lastOctet, std::uint32_t transmitted)
{
    StationInfo info;
    info.address = { 2, 0, 0, 0, 0xA0, lastOctet };
    info.transmittedFrames = transmitted;
    return info;
}

std::int64_t transmitted(const CardCounters& counters)
{
    return counters.statistics().TransmittedFragmentCount;
}

} // namespace

TEST(CardCounters, FramesOfThePeerAreCountedFromItsAssociation)
{
    CardCounters counters;
    counters.follow({ station(1, 5) });
    counters.follow({ station(1, 9) });
    EXPECT_EQ(transmitted(counters), 9);
}

TEST(CardCounters, NeverRunBackwardsAcrossAnAssociation)
{
    CardCounters counters;
    counters.follow({ station(1, 100) });
    counters.follow({ station(1, 3) }); // restarted
    EXPECT_EQ(transmitted(counters), 103);
    // More frames than before the restart already: only the event tells.
    counters.linkChanged();
    counters.follow({ station(1, 50) });
    EXPECT_EQ(transmitted(counters), 153);
}

TEST(CardCounters, StationsOfAnAdHocNetworkAreCountedTogether)
{
    CardCounters counters;
    counters.follow({ station(1, 10), station(2, 20) });
    counters.follow({ station(2, 25) });
    EXPECT_EQ(transmitted(counters), 35);
}

TEST(CardCounters, InterfaceIsCountedFromTheFirstReading)
{
    CardCounters counters;
    counters.follow(InterfaceCounters { 1000, 50'000, 60'000, 7 });
    counters.follow(InterfaceCounters { 1010, 50'500, 60'200, 9 });
    EXPECT_EQ(counters.receivedFrames(), 10U);
    EXPECT_EQ(counters.receivedBytes(), 500U);
    EXPECT_EQ(counters.transmittedBytes(), 200U);
    EXPECT_EQ(counters.framesWithoutBuffer(), 2U);
}

TEST(CardCounters, ResetKeepsTheBytes)
{
    CardCounters counters;
    counters.follow(InterfaceCounters {});
    counters.follow(InterfaceCounters { 10, 500, 200, 2 });
    counters.followDuplicates(0);
    counters.followDuplicates(4);
    counters.follow({ station(1, 10) });
    EXPECT_EQ(valueOf(counters.statistics().FrameDuplicateCount), 4);
    counters.reset();
    EXPECT_EQ(counters.receivedFrames(), 0U);
    EXPECT_EQ(counters.framesWithoutBuffer(), 0U);
    EXPECT_EQ(transmitted(counters), 0);
    EXPECT_EQ(valueOf(counters.statistics().FrameDuplicateCount), 0);
    EXPECT_EQ(counters.receivedBytes(), 500U);
}

TEST(CardCounters, ResetCountsFromThePresentReadings)
{
    CardCounters counters;
    counters.follow(InterfaceCounters {});
    counters.follow({ station(1, 10) });
    counters.reset();
    // The last reading was old: this traffic was before the reset.
    counters.follow(InterfaceCounters { 10, 500, 200, 2 });
    counters.followDuplicates(4);
    counters.follow({ station(1, 50) });
    EXPECT_EQ(counters.receivedFrames(), 0U);
    EXPECT_EQ(counters.framesWithoutBuffer(), 0U);
    EXPECT_EQ(transmitted(counters), 0);
    EXPECT_EQ(counters.receivedBytes(), 500U);
    counters.follow(InterfaceCounters { 13, 500, 200, 2 });
    counters.follow({ station(1, 52), station(2, 5) });
    EXPECT_EQ(counters.receivedFrames(), 3U);
    EXPECT_EQ(transmitted(counters), 7);
}

TEST(CardCounters, AssociationAfterAResetIsCountedFromItsStart)
{
    CardCounters counters;
    counters.reset();
    counters.linkChanged();
    counters.follow({ station(1, 5) });
    EXPECT_EQ(transmitted(counters), 5);
}
