#include "tests/services/simulator/card/CardUnderTest.h"

#include <gtest/gtest.h>

#include <set>

namespace {

ScenarioNetwork drifting()
{
    ScenarioNetwork network = openNetwork("drifting", 1, -70);
    network.driftDb = 6;
    return network;
}

} // namespace

TEST(Neighbourhood, DriftStaysWithinItsRange)
{
    const Neighbourhood neighbourhood({ drifting() }, 5);
    std::set<std::int32_t> seen;
    for (std::int64_t nowMs = 0; nowMs < 600'000; nowMs += 500)
        seen.insert(neighbourhood.signalDbm(drifting(), nowMs));
    EXPECT_GE(*seen.begin(), -76);
    EXPECT_LE(*seen.rbegin(), -64);
    EXPECT_GE(seen.size(), 9U);
}

TEST(Neighbourhood, DriftDependsOnTheSeed)
{
    const Neighbourhood first({ drifting() }, 5);
    const Neighbourhood same({ drifting() }, 5);
    const Neighbourhood other({ drifting() }, 6);
    bool differs = false;
    for (std::int64_t nowMs = 0; nowMs < 60'000; nowMs += 1000) {
        EXPECT_EQ(first.signalDbm(drifting(), nowMs), same.signalDbm(drifting(), nowMs));
        differs = differs || first.signalDbm(drifting(), nowMs) != other.signalDbm(drifting(), nowMs);
    }
    EXPECT_TRUE(differs);
}

TEST(Neighbourhood, HearsSignalsDownToTheMinimum)
{
    const Neighbourhood neighbourhood({ openNetwork("edge", 1, -95), openNetwork("gone", 2, -96) }, 1);
    const auto heard = neighbourhood.inRange(0, true);
    ASSERT_EQ(heard.size(), 1U);
    EXPECT_EQ(heard[0].network.ssid, "edge");
    EXPECT_EQ(heard[0].signalDbm, -95);
}

TEST(Neighbourhood, HearsFiveGhzOnlyWithAFiveGhzRadio)
{
    ScenarioNetwork high = openNetwork("high", 1);
    high.channel = 36;
    const Neighbourhood neighbourhood({ high, openNetwork("low", 2) }, 1);
    EXPECT_EQ(neighbourhood.inRange(0, true).size(), 2U);
    const auto heard = neighbourhood.inRange(0, false);
    ASSERT_EQ(heard.size(), 1U);
    EXPECT_EQ(heard[0].network.ssid, "low");
}

TEST(Neighbourhood, IdentifiesNetworksByBssid)
{
    Neighbourhood neighbourhood({ openNetwork("one", 1) }, 1);
    EXPECT_FALSE(neighbourhood.add(openNetwork("other name, same address", 1)));
    EXPECT_TRUE(neighbourhood.add(openNetwork("one", 2)));
    EXPECT_TRUE(neighbourhood.move(openNetwork("", 2).bssid, -80));
    EXPECT_EQ(neighbourhood.networks()[1].signalDbm, -80);
    EXPECT_TRUE(neighbourhood.remove(openNetwork("", 1).bssid));
    EXPECT_FALSE(neighbourhood.remove(openNetwork("", 1).bssid));
    EXPECT_FALSE(neighbourhood.move(openNetwork("", 1).bssid, -80));
    EXPECT_EQ(neighbourhood.networks().size(), 1U);
}
