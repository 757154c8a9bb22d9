#include "services/simulator/card/Association.h"

#include "tests/services/simulator/card/CardUnderTest.h"

#include <gtest/gtest.h>

namespace {

constexpr MacAddress createdBssid { 0x02, 0, 0, 0, 0, 0x01 };

Air airOf(const std::vector<ScenarioNetwork>& networks)
{
    Air air;
    for (const ScenarioNetwork& network : networks)
        air.networks.push_back({ network, network.signalDbm });
    return air;
}

class AssociationTest : public testing::Test {
protected:
    void advance(std::int64_t elapsedMs)
    {
        nowMs += elapsedMs;
        association.advance(nowMs, settings, air);
    }

    Association association { createdBssid };
    CardSettings settings;
    Air air { airOf({ openNetwork("cafe", 1, -80), openNetwork("cafe", 2, -50), openNetwork("other", 3) }) };
    std::int64_t nowMs { 0 };
};

} // namespace

TEST_F(AssociationTest, StaysIdleWithoutARequest)
{
    advance(60'000);
    EXPECT_EQ(association.state(), LinkState::Idle);
    EXPECT_FALSE(association.peer());
}

TEST_F(AssociationTest, JoinsTheStrongestNetworkOfTheNameAfter700Ms)
{
    association.joinSsid("cafe", nowMs);
    advance(699);
    EXPECT_EQ(association.state(), LinkState::Joining);
    EXPECT_FALSE(association.peer());
    advance(1);
    EXPECT_EQ(association.state(), LinkState::Up);
    EXPECT_EQ(association.peer()->network.bssid[5], 2);
}

TEST_F(AssociationTest, JoinsByAddress)
{
    association.joinBssid(openNetwork("", 1).bssid, nowMs);
    advance(700);
    ASSERT_EQ(association.state(), LinkState::Up);
    EXPECT_EQ(association.peer()->signalDbm, -80);
}

TEST_F(AssociationTest, NewRequestDropsTheLinkAtOnce)
{
    association.joinSsid("cafe", nowMs);
    advance(700);
    association.joinSsid("other", nowMs);
    EXPECT_FALSE(association.peer());
    advance(700);
    EXPECT_EQ(association.peer()->network.ssid, "other");
}

TEST_F(AssociationTest, StaysRefusedUntilTheNextRequest)
{
    settings.encryptionStatus = Ndis802_11Encryption1Enabled;
    association.joinSsid("cafe", nowMs);
    advance(700);
    EXPECT_EQ(association.state(), LinkState::Refused);
    settings.encryptionStatus = Ndis802_11EncryptionDisabled;
    advance(60'000);
    EXPECT_EQ(association.state(), LinkState::Refused);
    association.joinSsid("cafe", nowMs);
    advance(700);
    EXPECT_EQ(association.state(), LinkState::Up);
}

TEST_F(AssociationTest, WaitsForANetworkOutOfRange)
{
    association.joinSsid("away", nowMs);
    advance(700);
    EXPECT_EQ(association.state(), LinkState::Waiting);
    air = airOf({ openNetwork("away", 9) });
    advance(1000);
    EXPECT_EQ(association.state(), LinkState::Joining);
    advance(700);
    EXPECT_EQ(association.state(), LinkState::Up);
}

TEST_F(AssociationTest, RejoinsANetworkThatReturns)
{
    association.joinSsid("cafe", nowMs);
    advance(700);
    const Air before = air;
    air.networks.clear();
    advance(1);
    EXPECT_EQ(association.state(), LinkState::Waiting);
    EXPECT_FALSE(association.peer());
    air = before;
    advance(1);
    advance(700);
    EXPECT_EQ(association.state(), LinkState::Up);
}

TEST_F(AssociationTest, FollowsTheSignalOfThePeer)
{
    association.joinSsid("other", nowMs);
    advance(700);
    air.networks[2].signalDbm = -88;
    advance(1);
    EXPECT_EQ(association.peer()->signalDbm, -88);
}

TEST_F(AssociationTest, RejoinsWhenTheRadioIsSwitchedOn)
{
    association.joinSsid("cafe", nowMs);
    advance(700);
    const Air before = air;
    air = { false, {} };
    advance(1);
    EXPECT_EQ(association.state(), LinkState::Waiting);
    advance(60'000);
    EXPECT_EQ(association.state(), LinkState::Waiting);
    air = before;
    advance(1);
    advance(700);
    EXPECT_EQ(association.state(), LinkState::Up);
}

TEST_F(AssociationTest, DisassociatingDropsTheRequest)
{
    association.joinSsid("cafe", nowMs);
    advance(700);
    association.disassociate();
    advance(60'000);
    EXPECT_EQ(association.state(), LinkState::Idle);
    EXPECT_FALSE(association.peer());
}

TEST_F(AssociationTest, JoinsAHiddenNetworkOnlyByName)
{
    ScenarioNetwork hidden = openNetwork("hidden", 7);
    hidden.hidden = true;
    air = airOf({ hidden });
    association.joinBssid(hidden.bssid, nowMs);
    advance(700);
    EXPECT_EQ(association.state(), LinkState::Waiting);
    association.joinSsid("hidden", nowMs);
    advance(700);
    EXPECT_EQ(association.state(), LinkState::Up);
    association.joinBssid(hidden.bssid, nowMs); // with the name requested before
    advance(700);
    EXPECT_EQ(association.state(), LinkState::Up);
    association.disassociate();
    association.joinSsid("wrong", nowMs);
    association.joinBssid(hidden.bssid, nowMs);
    advance(700);
    EXPECT_EQ(association.state(), LinkState::Waiting);
}

TEST_F(AssociationTest, EmptyNameJoinsAnyNetworkThatAccepts)
{
    air.networks[1].network.security = Security::WpaPsk; // the strongest network needs a key
    association.joinSsid("", nowMs);
    advance(700);
    ASSERT_EQ(association.state(), LinkState::Up);
    EXPECT_EQ(association.peer()->network.ssid, "other");

    air.networks.clear();
    advance(1);
    EXPECT_EQ(association.state(), LinkState::Waiting);
    air = airOf({ openNetwork("new here", 8) });
    advance(1);
    advance(700);
    EXPECT_EQ(association.state(), LinkState::Up);
}

TEST_F(AssociationTest, CreatesAnAdHocNetworkOfAnUnknownName)
{
    settings.infrastructureMode = Ndis802_11IBSS;
    association.joinSsid("mine", nowMs);
    advance(700);
    ASSERT_EQ(association.state(), LinkState::Up);
    EXPECT_TRUE(association.isCreatedNetwork());
    EXPECT_EQ(association.peer()->network.ssid, "mine");
    EXPECT_EQ(association.peer()->network.bssid, createdBssid);

    air.radioOn = false;
    air.networks.clear();
    advance(1);
    EXPECT_EQ(association.state(), LinkState::Waiting);
    air.radioOn = true;
    advance(1);
    advance(700);
    EXPECT_EQ(association.state(), LinkState::Up);
}

TEST_F(AssociationTest, WaitsForAnAdHocNetworkOfOthersToReturn)
{
    settings.infrastructureMode = Ndis802_11IBSS;
    ScenarioNetwork friends = openNetwork("friends", 6);
    friends.adHoc = true;
    air = airOf({ friends });
    association.joinSsid("friends", nowMs);
    advance(700);
    EXPECT_FALSE(association.isCreatedNetwork());
    air.networks.clear();
    advance(1);
    advance(60'000);
    EXPECT_EQ(association.state(), LinkState::Waiting);
    air = airOf({ friends });
    advance(1);
    advance(700);
    EXPECT_EQ(association.state(), LinkState::Up);
}

TEST_F(AssociationTest, RefusesNetworksOfTheOtherMode)
{
    settings.infrastructureMode = Ndis802_11IBSS;
    association.joinSsid("cafe", nowMs);
    advance(700);
    EXPECT_EQ(association.state(), LinkState::Refused);

    settings.infrastructureMode = Ndis802_11Infrastructure;
    air.networks[0].network.adHoc = true;
    association.joinBssid(air.networks[0].network.bssid, nowMs);
    advance(700);
    EXPECT_EQ(association.state(), LinkState::Refused);
}

TEST_F(AssociationTest, BroadcastAddressRequestsTheNameAgain)
{
    association.joinSsid("cafe", nowMs);
    association.joinBssid(openNetwork("", 1).bssid, nowMs);
    association.joinBssid({ 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF }, nowMs);
    advance(700);
    ASSERT_EQ(association.state(), LinkState::Up);
    EXPECT_EQ(association.peer()->signalDbm, -50);
}
