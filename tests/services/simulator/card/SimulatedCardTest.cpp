#include "tests/services/simulator/card/CardUnderTest.h"

#include <gtest/gtest.h>

namespace {

Scenario scenario()
{
    Scenario result;
    result.card.address = { 0x00, 0x0B, 0x6B, 0x01, 0x02, 0x03 };
    result.card.eepromMajor = 2;
    result.card.eepromMinor = 16;
    result.networks = { openNetwork("cafe", 1, -60), openNetwork("other", 2, -70) };
    return result;
}

class SimulatedCardTest : public testing::Test {
protected:
    void join(const std::string& name)
    {
        EXPECT_TRUE(card.set(OID_802_11_SSID, ssidRecord(name)));
        card.pass(1000);
    }

    [[nodiscard]] std::uint32_t listed()
    {
        return recordAt<NDIS_802_11_BSSID_LIST>(*card.queryBytes(OID_802_11_BSSID_LIST, 4096))->NumberOfItems;
    }

    CardUnderTest card { scenario() };
};

} // namespace

TEST_F(SimulatedCardTest, ReportsItsHardware)
{
    EXPECT_EQ(card.query<MacAddress>(OID_802_3_CURRENT_ADDRESS), scenario().card.address);
    using FourBytes = std::array<std::uint8_t, 4>;
    EXPECT_EQ(card.query<FourBytes>(VX_OID_802_11_EEPROM_VERSION), (FourBytes { 0, 0, 2, 16 }));
    const auto types = card.query<NDIS_802_11_NETWORK_TYPE_LIST>(OID_802_11_NETWORK_TYPES_SUPPORTED);
    ASSERT_TRUE(types);
    EXPECT_EQ(valueOf(types->NumberOfItems), 3U);
    EXPECT_EQ(valueOf(types->NetworkType), (std::array<std::uint32_t, 4> { 1, 3, 2, 0 }));
}

TEST_F(SimulatedCardTest, WithoutA5GhzRadioRejects5GhzSettings)
{
    Scenario low = scenario();
    low.card.supportsFiveGhz = false;
    low.networks[1].channel = 36;
    CardUnderTest lowCard(low);
    const auto types = lowCard.query<NDIS_802_11_NETWORK_TYPE_LIST>(OID_802_11_NETWORK_TYPES_SUPPORTED);
    EXPECT_EQ(valueOf(types->NumberOfItems), 2U);
    EXPECT_FALSE(lowCard.set<std::uint32_t>(VX_OID_802_11_PHY_MODE, 2));
    EXPECT_FALSE(lowCard.set<std::uint32_t>(VX_OID_802_11_PHY_MODE, 3));
    EXPECT_TRUE(lowCard.set<std::uint32_t>(VX_OID_802_11_PHY_MODE, 1));
    NDIS_802_11_CONFIGURATION configuration = CardSettings().configuration;
    configuration.DSConfig = 5180000;
    EXPECT_FALSE(lowCard.set(OID_802_11_CONFIGURATION, configuration));
    lowCard.scan();
    EXPECT_EQ(lowCard.card.stateAt(lowCard.nowMs).scanList.size(), 1U);
}

TEST_F(SimulatedCardTest, ReportsTheOldListUntilTheScanIsDone)
{
    EXPECT_EQ(listed(), 0U);
    EXPECT_TRUE(card.set(OID_802_11_BSSID_LIST_SCAN, std::uint32_t { 0 }));
    card.pass(1499);
    EXPECT_EQ(listed(), 0U);
    card.pass(1);
    EXPECT_EQ(listed(), 2U);
    EXPECT_EQ(card.queryBytes(VX_OID_802_11_BSSID_LIST_NEXT, 4096)->size(), 0U);
}

TEST_F(SimulatedCardTest, ContinuesALongListUntilAnEmptyReply)
{
    Scenario crowd;
    for (std::uint8_t i = 0; i < 60; ++i)
        crowd.networks.push_back(openNetwork("network", i));
    CardUnderTest crowded(crowd);
    crowded.scan();
    std::uint32_t entries = 0;
    std::vector<std::size_t> sizes;
    for (auto chunk = crowded.queryBytes(OID_802_11_BSSID_LIST, 4096); chunk && !chunk->empty() && sizes.size() < 10;
         chunk = crowded.queryBytes(VX_OID_802_11_BSSID_LIST_NEXT, 4096)) {
        entries += recordAt<NDIS_802_11_BSSID_LIST>(*chunk)->NumberOfItems;
        sizes.push_back(chunk->size());
    }
    EXPECT_EQ(entries, 60U);
    EXPECT_EQ(sizes.size(), 3U);
}

TEST_F(SimulatedCardTest, ReportsTheLinkInEveryAnswer)
{
    EXPECT_FALSE(card.isLinkUp());
    EXPECT_EQ(valueOf(card.query<NDIS_802_11_SSID>(OID_802_11_SSID)->SsidLength), 0U);
    EXPECT_EQ(valueOf(card.query<VX_802_11_LINK_COUNTERS>(VX_OID_802_11_LINK_COUNTERS)->TxRate), 0U);
    join("cafe");
    EXPECT_TRUE(card.isLinkUp());
    EXPECT_EQ(card.query<NDIS_802_11_SSID>(OID_802_11_SSID)->Ssid, ssidRecord("cafe").Ssid);
    EXPECT_EQ(card.query<MacAddress>(OID_802_11_BSSID), openNetwork("", 1).bssid);
    EXPECT_EQ(card.query<std::int32_t>(OID_802_11_RSSI), -60);
    EXPECT_EQ(valueOf(card.query<NDIS_802_11_CONFIGURATION>(OID_802_11_CONFIGURATION)->DSConfig), 2437000U);
    card.pass(2000);
    const auto counters = card.query<VX_802_11_LINK_COUNTERS>(VX_OID_802_11_LINK_COUNTERS);
    EXPECT_EQ(valueOf(counters->TxRate), 108U);
    EXPECT_EQ(valueOf(counters->ChannelQuality), 70U);
    EXPECT_GT(valueOf(counters->TxCount), 0U);
    EXPECT_GT(valueOf(counters->RxCount), 0U);
    EXPECT_EQ(listed(), 1U); // the peer is heard without a scan
}

TEST_F(SimulatedCardTest, DisassociatingKeepsTheKeys)
{
    EXPECT_TRUE(card.setBytes(OID_802_11_ADD_KEY, keyRecord(keyIndexTransmit | 2, "abcde")));
    join("cafe");
    EXPECT_TRUE(card.set(OID_802_11_DISASSOCIATE, std::uint32_t { 0 }));
    EXPECT_FALSE(card.isLinkUp());
    EXPECT_EQ(card.card.stateAt(card.nowMs).settings.transmitKeyIndex, 2U);
}

TEST_F(SimulatedCardTest, OnlyAChangedModeDropsTheLink)
{
    join("cafe");
    EXPECT_TRUE(card.set<std::uint32_t>(OID_802_11_INFRASTRUCTURE_MODE, Ndis802_11Infrastructure));
    EXPECT_TRUE(card.isLinkUp());
    EXPECT_TRUE(card.set<std::uint32_t>(OID_802_11_INFRASTRUCTURE_MODE, Ndis802_11IBSS));
    EXPECT_FALSE(card.isLinkUp());
}

TEST_F(SimulatedCardTest, RejectsInvalidValues)
{
    EXPECT_FALSE(card.set<std::uint32_t>(OID_802_11_INFRASTRUCTURE_MODE, 3));
    EXPECT_FALSE(card.set<std::uint32_t>(OID_802_11_AUTHENTICATION_MODE, 6));
    for (const std::uint32_t status : { 2U, 3U, 5U, 7U, 8U })
        EXPECT_FALSE(card.set(OID_802_11_ENCRYPTION_STATUS, status)) << status;
    EXPECT_FALSE(card.set<std::uint32_t>(OID_802_11_RTS_THRESHOLD, 2348));
    EXPECT_FALSE(card.set<std::uint32_t>(OID_802_11_FRAGMENTATION_THRESHOLD, 255));
    EXPECT_TRUE(card.set<std::uint32_t>(OID_802_11_FRAGMENTATION_THRESHOLD, 256));
    EXPECT_FALSE(card.set<std::uint32_t>(OID_802_11_POWER_MODE, 3));
    EXPECT_FALSE(card.set<std::uint32_t>(VX_OID_802_11_TX_POWER, 80));
    EXPECT_FALSE(card.set<std::uint32_t>(VX_OID_802_11_PHY_MODE, 4));
    NDIS_802_11_SSID tooLong = ssidRecord("cafe");
    tooLong.SsidLength = 33;
    EXPECT_FALSE(card.set(OID_802_11_SSID, tooLong));
    NDIS_802_11_CONFIGURATION configuration = CardSettings().configuration;
    configuration.DSConfig = 0; // the utility sends 0 for a join from the site survey
    EXPECT_FALSE(card.set(OID_802_11_CONFIGURATION, configuration));
    EXPECT_EQ(valueOf(card.query<NDIS_802_11_CONFIGURATION>(OID_802_11_CONFIGURATION)->DSConfig), 2412000U);
}

TEST_F(SimulatedCardTest, SoftwareRadioDropsLinkAndListAndRestoresTheLink)
{
    card.scan();
    join("cafe");
    using Word = std::array<std::uint8_t, 4>;
    EXPECT_TRUE(card.set(VX_OID_802_11_RADIO, Word { 0, 1, 1, 1 })); // only the first byte counts
    EXPECT_FALSE(card.isLinkUp());
    EXPECT_EQ(listed(), 0U);
    card.scan();
    EXPECT_EQ(listed(), 0U);
    EXPECT_TRUE(card.set(VX_OID_802_11_RADIO, Word { 1 }));
    card.scan();
    EXPECT_TRUE(card.isLinkUp() || (card.pass(1000), card.isLinkUp()));
    EXPECT_EQ(listed(), 2U);
}

TEST_F(SimulatedCardTest, ReportsTheRadioSwitchWhichCannotBeSet)
{
    join("cafe");
    card.card.setHardwareRadio(false, card.nowMs);
    EXPECT_FALSE(card.isLinkUp());
    VX_802_11_STA_CONFIG config { 1, 0, 2, 0, 1, 1, 7, 1 };
    EXPECT_TRUE(card.set(VX_OID_802_11_STA_CONFIG, config));
    const auto read = card.query<VX_802_11_STA_CONFIG>(VX_OID_802_11_STA_CONFIG);
    EXPECT_EQ(read->EnableTxBurst, 1U);
    EXPECT_EQ(read->UseBGProtection, 2U);
    EXPECT_EQ(read->UseOfdmRatesIn11gAdhoc, 1U);
    EXPECT_EQ(read->HwRadioStatus, 0U);
    EXPECT_EQ(read->Rsv1, 0U);
    EXPECT_EQ(read->SystemErrorBitmap, 0U);
}

TEST_F(SimulatedCardTest, ReportsAnEepromError)
{
    Scenario bad = scenario();
    bad.card.eepromError = true;
    CardUnderTest badCard(bad);
    EXPECT_EQ(badCard.query<VX_802_11_STA_CONFIG>(VX_OID_802_11_STA_CONFIG)->SystemErrorBitmap, 1U);
}

TEST_F(SimulatedCardTest, ClearsTheEventFlagWhenItIsRead)
{
    EXPECT_EQ(card.query<std::uint32_t>(VX_OID_802_11_EVENT_FLAG), 0U);
    card.card.raiseEvent();
    EXPECT_EQ(card.query<std::uint32_t>(VX_OID_802_11_EVENT_FLAG), 1U);
    EXPECT_EQ(card.query<std::uint32_t>(VX_OID_802_11_EVENT_FLAG), 0U);
}

TEST_F(SimulatedCardTest, ResetClearsSettingsAndRaisesTheEventFlag)
{
    EXPECT_TRUE(card.set<std::uint32_t>(OID_802_11_AUTHENTICATION_MODE, 4));
    join("cafe");
    card.card.reset(card.nowMs);
    EXPECT_FALSE(card.isLinkUp());
    EXPECT_EQ(card.query<std::uint32_t>(OID_802_11_AUTHENTICATION_MODE), 0U);
    EXPECT_EQ(card.query<std::uint32_t>(VX_OID_802_11_EVENT_FLAG), 1U);
    EXPECT_EQ(card.query<std::uint32_t>(VX_OID_802_11_READY_FLAG), 0U);
    card.pass(500);
    EXPECT_EQ(card.query<std::uint32_t>(VX_OID_802_11_READY_FLAG), 1U);
}

TEST_F(SimulatedCardTest, HoldsTheReadyFlagUntilItIsReleased)
{
    card.card.holdReady(true);
    card.pass(100'000);
    EXPECT_EQ(card.query<std::uint32_t>(VX_OID_802_11_READY_FLAG), 0U);
    card.card.holdReady(false);
    EXPECT_EQ(card.query<std::uint32_t>(VX_OID_802_11_READY_FLAG), 1U);
}

TEST_F(SimulatedCardTest, LinkFollowsNetworksThatMoveAppearAndDisappear)
{
    join("cafe");
    EXPECT_TRUE(card.card.moveNetwork(openNetwork("", 1).bssid, -110, card.nowMs));
    EXPECT_FALSE(card.isLinkUp());
    EXPECT_TRUE(card.card.moveNetwork(openNetwork("", 1).bssid, -75, card.nowMs));
    card.pass(1000);
    EXPECT_TRUE(card.isLinkUp());
    EXPECT_EQ(card.query<std::int32_t>(OID_802_11_RSSI), -75);
    EXPECT_TRUE(card.card.removeNetwork(openNetwork("", 1).bssid, card.nowMs));
    EXPECT_FALSE(card.isLinkUp());
    EXPECT_FALSE(card.card.removeNetwork(openNetwork("", 1).bssid, card.nowMs));
    EXPECT_TRUE(card.card.addNetwork(openNetwork("cafe", 9), card.nowMs));
    EXPECT_FALSE(card.card.addNetwork(openNetwork("cafe", 9), card.nowMs));
    card.pass(1000);
    EXPECT_TRUE(card.isLinkUp());
}

TEST_F(SimulatedCardTest, RemovedNetworkLeavesTheListAfterThreeScans)
{
    card.scan();
    EXPECT_TRUE(card.card.removeNetwork(openNetwork("", 2).bssid, card.nowMs));
    card.scan();
    card.scan();
    EXPECT_EQ(listed(), 2U);
    card.scan();
    EXPECT_EQ(listed(), 1U);
}

TEST_F(SimulatedCardTest, ResetsTheFrameCounters)
{
    join("cafe");
    card.pass(60'000);
    EXPECT_GT(valueOf(card.query<NDIS_802_11_STATISTICS>(OID_802_11_STATISTICS)->ReceivedFragmentCount), 0);
    EXPECT_TRUE(card.setBytes(VX_OID_802_11_RESET_COUNTERS, {}));
    EXPECT_EQ(valueOf(card.query<NDIS_802_11_STATISTICS>(OID_802_11_STATISTICS)->ReceivedFragmentCount), 0);
    EXPECT_EQ(card.query<std::uint32_t>(OID_GEN_RCV_OK), 0U);
}
