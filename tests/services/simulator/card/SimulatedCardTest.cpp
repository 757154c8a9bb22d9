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

// Every request of the driver interface with its record's length.
struct OidCase {
    const char* name;
    std::uint32_t oid;
    std::uint32_t queryLength; // 0: cannot be queried
    Bytes setInput; // a valid one; empty with isSet false: cannot be set
    bool isSet { false };
    bool needsLink { false };
};

template <typename Record> OidCase setOnly(const char* name, std::uint32_t oid, const Record& input)
{
    return { name, oid, 0, bytesOf(input), true, false };
}

template <typename Record> OidCase both(const char* name, std::uint32_t oid, const Record& input)
{
    return { name, oid, sizeof(Record), bytesOf(input), true, false };
}

OidCase queryOnly(const char* name, std::uint32_t oid, std::uint32_t length, bool needsLink = false)
{
    return { name, oid, length, {}, false, needsLink };
}

std::vector<OidCase> everyOid()
{
    const CardSettings defaults;
    std::vector<OidCase> cases {
        queryOnly("OID_GEN_MEDIA_CONNECT_STATUS", 0x00010114, 4),
        queryOnly("OID_GEN_RCV_OK", 0x00020102, 4),
        queryOnly("OID_GEN_RCV_NO_BUFFER", 0x00020105, 4),
        queryOnly("OID_802_3_CURRENT_ADDRESS", 0x01010102, 6),
        both("OID_802_11_BSSID", 0x0D010101, openNetwork("", 1).bssid),
        both("OID_802_11_SSID", 0x0D010102, ssidRecord("cafe")),
        both<std::uint32_t>("OID_802_11_INFRASTRUCTURE_MODE", 0x0D010108, 1),
        setOnly<std::uint32_t>("OID_802_11_DISASSOCIATE", 0x0D010115, 0xDEAD),
        both<std::uint32_t>("OID_802_11_AUTHENTICATION_MODE", 0x0D010118, 4),
        setOnly<std::uint32_t>("OID_802_11_BSSID_LIST_SCAN", 0x0D01011A, 0xBEEF),
        both<std::uint32_t>("OID_802_11_ENCRYPTION_STATUS", 0x0D01011B, 6),
        { "OID_802_11_ADD_KEY", 0x0D01011D, 0, keyRecord(keyIndexTransmit, "abcde"), true, false },
        setOnly("OID_802_11_REMOVE_KEY", 0x0D01011E, removeKeyRecord(3)),
        queryOnly("VX_OID_802_11_EVENT_FLAG", 0x0D010120, 4),
        queryOnly("VX_OID_802_11_READY_FLAG", 0x0D010121, 4),
        queryOnly("OID_802_11_NETWORK_TYPES_SUPPORTED", 0x0D010203, 20),
        queryOnly("OID_802_11_RSSI", 0x0D010206, 4, true),
        both<std::uint32_t>("OID_802_11_FRAGMENTATION_THRESHOLD", 0x0D010209, 0),
        both<std::uint32_t>("OID_802_11_RTS_THRESHOLD", 0x0D01020A, 2347),
        both("OID_802_11_DESIRED_RATES", 0x0D010210, NDIS_802_11_RATES { 22 }),
        both("OID_802_11_CONFIGURATION", 0x0D010211, defaults.configuration),
        both<std::uint32_t>("OID_802_11_POWER_MODE", 0x0D010216, 2),
        queryOnly("OID_802_11_BSSID_LIST", 0x0D010217, 4096),
        queryOnly("VX_OID_802_11_BSSID_LIST_NEXT", 0x0D010218, 4096),
        queryOnly("OID_802_11_STATISTICS", 0x0D020212, 100),
        both<std::uint32_t>("VX_OID_802_11_PREAMBLE", 0x0D710101, 2),
        queryOnly("VX_OID_802_11_LINK_COUNTERS", 0x0D710102, 16),
        { "VX_OID_802_11_RESET_COUNTERS", 0x0D710103, 0, {}, true, false },
        both<std::uint32_t>("VX_OID_802_11_RADIO", 0x0D710108, 1),
        both<std::uint32_t>("VX_OID_802_11_PHY_MODE", 0x0D71010C, 3),
        both("VX_OID_802_11_STA_CONFIG", 0x0D710111, VX_802_11_STA_CONFIG {}),
        { "VX_OID_802_11_ADD_WPA", 0x0D710116, 0, keyRecord(keyIndexTransmit, std::string(32, 'p'), false), true,
            false },
        both<std::uint32_t>("VX_OID_802_11_TX_POWER", 0x0D710118, 12),
        queryOnly("VX_OID_802_11_EEPROM_VERSION", 0x0D710119, 4),
    };
    for (OidCase& row : cases)
        row.needsLink = row.needsLink || row.oid == OID_802_11_BSSID;
    return cases;
}

class EveryOid : public testing::TestWithParam<OidCase> {
protected:
    CardUnderTest card { scenario() };
};

} // namespace

TEST_P(EveryOid, AnswersItsQueryWithItsRecordAndRefusesLessRoom)
{
    const OidCase& row = GetParam();
    if (row.needsLink) {
        EXPECT_FALSE(card.queryBytes(row.oid, row.queryLength));
        ASSERT_TRUE(card.set(OID_802_11_SSID, ssidRecord("cafe")));
        card.pass(1000);
    }
    card.scan();
    const auto reply = card.queryBytes(row.oid, std::max(row.queryLength, 4U));
    ASSERT_EQ(reply.has_value(), row.queryLength != 0);
    if (!reply)
        return;
    const bool isList = row.queryLength == 4096;
    if (isList)
        EXPECT_LE(reply->size(), row.queryLength);
    else
        EXPECT_EQ(reply->size(), row.queryLength);
    EXPECT_FALSE(card.queryBytes(row.oid, row.queryLength - 1));
    EXPECT_FALSE(card.queryBytes(row.oid, 0));
    EXPECT_TRUE(card.queryBytes(row.oid, row.queryLength + 1));
}

TEST_P(EveryOid, TakesItsRecordAndNoOtherLength)
{
    const OidCase& row = GetParam();
    EXPECT_EQ(card.setBytes(row.oid, row.setInput), row.isSet);
    Bytes input = row.setInput;
    input.push_back({});
    EXPECT_FALSE(card.setBytes(row.oid, input));
    if (row.setInput.empty())
        return;
    input.resize(row.setInput.size() - 1);
    EXPECT_FALSE(card.setBytes(row.oid, input));
    EXPECT_FALSE(card.setBytes(row.oid, {}));
}

INSTANTIATE_TEST_SUITE_P(Catalogue, EveryOid, testing::ValuesIn(everyOid()),
    [](const testing::TestParamInfo<OidCase>& info) { return std::string(info.param.name); });

TEST_F(SimulatedCardTest, RefusesUnknownObjects)
{
    EXPECT_FALSE(card.queryBytes(0x0D010999, 4));
    EXPECT_FALSE(card.setBytes(0x0D010999, Bytes(4)));
    EXPECT_FALSE(card.queryBytes(0, 4096));
}

TEST_F(SimulatedCardTest, SaysWhatItIs)
{
    EXPECT_EQ(card.query<MacAddress>(OID_802_3_CURRENT_ADDRESS), scenario().card.address);
    using FourBytes = std::array<std::uint8_t, 4>;
    EXPECT_EQ(card.query<FourBytes>(VX_OID_802_11_EEPROM_VERSION), (FourBytes { 0, 0, 2, 16 }));
    const auto types = card.query<NDIS_802_11_NETWORK_TYPE_LIST>(OID_802_11_NETWORK_TYPES_SUPPORTED);
    ASSERT_TRUE(types);
    EXPECT_EQ(valueOf(types->NumberOfItems), 3U);
    EXPECT_EQ(valueOf(types->NetworkType), (std::array<std::uint32_t, 4> { 1, 3, 2, 0 }));
}

TEST_F(SimulatedCardTest, ACardWithoutFiveGhzHasNoneOfIt)
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

TEST_F(SimulatedCardTest, ShowsTheOldListUntilTheScanIsDone)
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
    int replies = 0;
    for (std::uint32_t oid = OID_802_11_BSSID_LIST; replies < 100; oid = VX_OID_802_11_BSSID_LIST_NEXT) {
        const auto chunk = crowded.queryBytes(oid, 4096);
        ASSERT_TRUE(chunk);
        if (chunk->empty())
            break;
        entries += recordAt<NDIS_802_11_BSSID_LIST>(*chunk)->NumberOfItems;
        ++replies;
    }
    EXPECT_EQ(entries, 60U);
    EXPECT_EQ(replies, 3);
}

TEST_F(SimulatedCardTest, AJoinShowsInEveryAnswer)
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
    EXPECT_EQ(listed(), 1U); // the network of the link is heard without a scan
}

TEST_F(SimulatedCardTest, DisassociatingKeepsTheKeys)
{
    EXPECT_TRUE(card.setBytes(OID_802_11_ADD_KEY, keyRecord(keyIndexTransmit | 2, "abcde")));
    join("cafe");
    EXPECT_TRUE(card.set(OID_802_11_DISASSOCIATE, std::uint32_t { 0 }));
    EXPECT_FALSE(card.isLinkUp());
    EXPECT_EQ(card.card.stateAt(card.nowMs).settings.transmitKeyIndex, 2U);
}

TEST_F(SimulatedCardTest, AChangedModeEndsTheLinkAndTheSameOneDoesNot)
{
    join("cafe");
    EXPECT_TRUE(card.set<std::uint32_t>(OID_802_11_INFRASTRUCTURE_MODE, Ndis802_11Infrastructure));
    EXPECT_TRUE(card.isLinkUp());
    EXPECT_TRUE(card.set<std::uint32_t>(OID_802_11_INFRASTRUCTURE_MODE, Ndis802_11IBSS));
    EXPECT_FALSE(card.isLinkUp());
}

TEST_F(SimulatedCardTest, RefusesValuesThatNoCardTakes)
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
    configuration.DSConfig = 0; // what a join from the site survey sends
    EXPECT_FALSE(card.set(OID_802_11_CONFIGURATION, configuration));
    EXPECT_EQ(valueOf(card.query<NDIS_802_11_CONFIGURATION>(OID_802_11_CONFIGURATION)->DSConfig), 2412000U);
}

TEST_F(SimulatedCardTest, TheSoftwareRadioTakesLinkAndListAndGivesTheLinkBack)
{
    card.scan();
    join("cafe");
    using Word = std::array<std::uint8_t, 4>;
    EXPECT_TRUE(card.set(VX_OID_802_11_RADIO, Word { 0, 1, 1, 1 })); // the first byte alone counts
    EXPECT_FALSE(card.isLinkUp());
    EXPECT_EQ(listed(), 0U);
    card.scan();
    EXPECT_EQ(listed(), 0U);
    EXPECT_TRUE(card.set(VX_OID_802_11_RADIO, Word { 1 }));
    card.scan();
    EXPECT_TRUE(card.isLinkUp() || (card.pass(1000), card.isLinkUp()));
    EXPECT_EQ(listed(), 2U);
}

TEST_F(SimulatedCardTest, TheSwitchOnTheCardIsReportedAndCannotBeSet)
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

TEST_F(SimulatedCardTest, ABadEepromIsReported)
{
    Scenario bad = scenario();
    bad.card.eepromError = true;
    CardUnderTest badCard(bad);
    EXPECT_EQ(badCard.query<VX_802_11_STA_CONFIG>(VX_OID_802_11_STA_CONFIG)->SystemErrorBitmap, 1U);
}

TEST_F(SimulatedCardTest, AnEventIsReadOnce)
{
    EXPECT_EQ(card.query<std::uint32_t>(VX_OID_802_11_EVENT_FLAG), 0U);
    card.card.raiseEvent();
    EXPECT_EQ(card.query<std::uint32_t>(VX_OID_802_11_EVENT_FLAG), 1U);
    EXPECT_EQ(card.query<std::uint32_t>(VX_OID_802_11_EVENT_FLAG), 0U);
}

TEST_F(SimulatedCardTest, AResetCardLosesItsSettingsAndAsksForThemWhenReady)
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

TEST_F(SimulatedCardTest, AHeldReadyFlagStaysDownUntilItIsReleased)
{
    card.card.holdReady(true);
    card.pass(100'000);
    EXPECT_EQ(card.query<std::uint32_t>(VX_OID_802_11_READY_FLAG), 0U);
    card.card.holdReady(false);
    EXPECT_EQ(card.query<std::uint32_t>(VX_OID_802_11_READY_FLAG), 1U);
}

TEST_F(SimulatedCardTest, NetworksComeGoAndMoveUnderTheLink)
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

TEST_F(SimulatedCardTest, ARemovedNetworkLeavesTheListWithTheThirdScan)
{
    card.scan();
    EXPECT_TRUE(card.card.removeNetwork(openNetwork("", 2).bssid, card.nowMs));
    card.scan();
    card.scan();
    EXPECT_EQ(listed(), 2U);
    card.scan();
    EXPECT_EQ(listed(), 1U);
}

TEST_F(SimulatedCardTest, ResettingTheCountersIsARequestWithoutInput)
{
    join("cafe");
    card.pass(60'000);
    EXPECT_GT(valueOf(card.query<NDIS_802_11_STATISTICS>(OID_802_11_STATISTICS)->ReceivedFragmentCount), 0);
    EXPECT_TRUE(card.setBytes(VX_OID_802_11_RESET_COUNTERS, {}));
    EXPECT_EQ(valueOf(card.query<NDIS_802_11_STATISTICS>(OID_802_11_STATISTICS)->ReceivedFragmentCount), 0);
    EXPECT_EQ(card.query<std::uint32_t>(OID_GEN_RCV_OK), 0U);
}
