#include "services/linux/card/CardRequests.h"

#include "tests/services/card/OidCases.h"
#include "tests/services/linux/card/CardUnderTest.h"

#include <gtest/gtest.h>

namespace {

class EveryOid : public testing::TestWithParam<OidCase> {
protected:
    CardUnderTest card;
};

} // namespace

TEST_P(EveryOid, AnswersQueriesThatHaveRoomForItsRecord)
{
    const OidCase& row = GetParam();
    if (row.needsLink) {
        EXPECT_FALSE(card.queryBytes(row.oid, row.queryLength));
        card.joinOpen();
    }
    const auto reply = card.queryBytes(row.oid, std::max(row.queryLength, 4U));
    ASSERT_EQ(reply.has_value(), row.queryLength != 0);
    if (!reply)
        return;
    if (row.queryLength == 4096)
        EXPECT_LE(reply->size(), row.queryLength);
    else
        EXPECT_EQ(reply->size(), row.queryLength);
    EXPECT_FALSE(card.queryBytes(row.oid, row.queryLength - 1));
    EXPECT_FALSE(card.queryBytes(row.oid, 0));
    EXPECT_TRUE(card.queryBytes(row.oid, row.queryLength + 1));
}

TEST_P(EveryOid, AcceptsOnlySetsOfItsRecordSize)
{
    const OidCase& row = GetParam();
    Bytes input = row.setInput.value_or(Bytes());
    EXPECT_EQ(card.setBytes(row.oid, input), row.setInput.has_value());
    input.push_back({});
    EXPECT_FALSE(card.setBytes(row.oid, input));
    if (input.size() == 1)
        return;
    input.resize(input.size() - 2);
    EXPECT_FALSE(card.setBytes(row.oid, input));
    EXPECT_FALSE(card.setBytes(row.oid, {}));
}

INSTANTIATE_TEST_SUITE_P(Catalogue, EveryOid, testing::ValuesIn(everyOid(networkEntry("", 1).bssid)),
    [](const testing::TestParamInfo<OidCase>& info) { return std::string(info.param.name); });

TEST(CardRequests, UnknownOidsAreRefused)
{
    CardUnderTest card;
    constexpr std::uint32_t unknownOid = OID_802_11_BSSID | 0xFF00;
    EXPECT_FALSE(card.queryBytes(unknownOid, 4096));
    EXPECT_FALSE(card.setBytes(unknownOid, Bytes(4)));
}

TEST(CardRequests, LinkQueriesDescribeThePeer)
{
    CardUnderTest card;
    card.hear({ networkEntry("cafe", 1, 5180) });
    (void)card.set(OID_802_11_SSID, ssidRecord("cafe"));
    EXPECT_EQ(card.word(OID_GEN_MEDIA_CONNECT_STATUS), NdisMediaStateDisconnected);
    card.linkUp(1, "cafe", 5180);
    StationInfo peer;
    peer.signalDbm = -55;
    peer.transmitBitrate = 540;
    card.card.stationsRead({ peer });
    card.card.noiseRead(-90);

    EXPECT_EQ(card.word(OID_GEN_MEDIA_CONNECT_STATUS), NdisMediaStateConnected);
    EXPECT_EQ(card.query<MacAddress>(OID_802_11_BSSID), networkEntry("cafe", 1).bssid);
    EXPECT_EQ(valueOf(card.query<NDIS_802_11_SSID>(OID_802_11_SSID)->SsidLength), 4U);
    EXPECT_EQ(card.query<std::int32_t>(OID_802_11_RSSI), -55);
    const auto configuration = card.query<NDIS_802_11_CONFIGURATION>(OID_802_11_CONFIGURATION);
    EXPECT_EQ(valueOf(configuration->DSConfig), 5180000U);
    EXPECT_EQ(valueOf(configuration->BeaconPeriod), 100U);
    const auto counters = card.query<VX_802_11_LINK_COUNTERS>(VX_OID_802_11_LINK_COUNTERS);
    EXPECT_EQ(counters->TxRate, 108U);
    EXPECT_EQ(counters->ChannelQuality, 70U);
}

TEST(CardRequests, QualityIsTheDistanceToTheNoise)
{
    EXPECT_EQ(channelQuality(-60, std::nullopt), 70U);
    EXPECT_EQ(channelQuality(-60, -80), 40U);
    EXPECT_EQ(channelQuality(-99, -90), 0U);
    EXPECT_EQ(channelQuality(-20, -90), 100U);
}

TEST(CardRequests, OwnCellHasAUsualSignal)
{
    CardUnderTest card;
    card.joinOpen();
    EXPECT_EQ(card.query<std::int32_t>(OID_802_11_RSSI), NetworkList::ownCellSignalDbm);
}

TEST(CardRequests, HardwareAndRadioAreDescribed)
{
    CardUnderTest card;
    EXPECT_EQ(card.query<MacAddress>(OID_802_3_CURRENT_ADDRESS), ownAddress);
    EXPECT_EQ(card.queryBytes(VX_OID_802_11_EEPROM_VERSION, 4), bytesOf(std::array<std::uint8_t, 4> { 0, 0, 12, 34 }));
    const auto types = card.query<NDIS_802_11_NETWORK_TYPE_LIST>(OID_802_11_NETWORK_TYPES_SUPPORTED);
    EXPECT_EQ(valueOf(types->NumberOfItems), 3U);
    EXPECT_EQ(valueOf(types->NetworkType),
        (std::array<std::uint32_t, 4> { Ndis802_11DS, Ndis802_11OFDM24, Ndis802_11OFDM5, 0 }));
    EXPECT_EQ(card.query<VX_802_11_STA_CONFIG>(VX_OID_802_11_STA_CONFIG)->HwRadioStatus, 1U);
    (void)card.card.radioSwitched(false, true, card.nowMs);
    EXPECT_EQ(card.query<VX_802_11_STA_CONFIG>(VX_OID_802_11_STA_CONFIG)->HwRadioStatus, 0U);
    EXPECT_EQ(card.word(VX_OID_802_11_RADIO), 1U);
    (void)card.card.radioSwitched(true, false, card.nowMs);
    EXPECT_EQ(card.word(VX_OID_802_11_RADIO), 0U);
}

TEST(CardRequests, ThresholdsBeyondEveryFrameAreOff)
{
    CardUnderTest card;
    EXPECT_TRUE(card.set<std::uint32_t>(OID_802_11_RTS_THRESHOLD, 2347));
    EXPECT_FALSE(effectIn<SetRtsThreshold>(card.effects)->bytes);
    EXPECT_TRUE(card.set<std::uint32_t>(OID_802_11_RTS_THRESHOLD, 500));
    EXPECT_EQ(effectIn<SetRtsThreshold>(card.effects)->bytes, 500U);
    EXPECT_TRUE(card.set<std::uint32_t>(OID_802_11_FRAGMENTATION_THRESHOLD, 0));
    EXPECT_FALSE(effectIn<SetFragmentationThreshold>(card.effects)->bytes);
    EXPECT_TRUE(card.set<std::uint32_t>(OID_802_11_FRAGMENTATION_THRESHOLD, 256));
    EXPECT_EQ(effectIn<SetFragmentationThreshold>(card.effects)->bytes, 256U);
}

TEST(CardRequests, PowerSavingRadioAndTransmitPowerReachTheKernel)
{
    CardUnderTest card;
    EXPECT_TRUE(card.set<std::uint32_t>(OID_802_11_POWER_MODE, 2));
    EXPECT_TRUE(effectIn<SetPowerSave>(card.effects)->isOn);
    EXPECT_TRUE(card.set<std::uint32_t>(VX_OID_802_11_RADIO, 0));
    EXPECT_FALSE(effectIn<SetRadio>(card.effects)->isOn);
    EXPECT_TRUE(card.set<std::uint32_t>(VX_OID_802_11_TX_POWER, 50));
    EXPECT_EQ(effectIn<SetTransmitPower>(card.effects)->mbm, 2300 - 300);
    card.joinOpen(); // on a channel with less power
    EXPECT_EQ(effectIn<SetTransmitPower>(card.effects)->mbm, 2000 - 300);
}

TEST(CardRequests, WpaNoneAndEnterpriseAreRefusedAndSoIsTheJoinThatFollows)
{
    for (const std::int32_t mode : { Ndis802_11AuthModeWPANone, Ndis802_11AuthModeWPA }) {
        CardUnderTest card;
        EXPECT_FALSE(card.set<std::int32_t>(OID_802_11_AUTHENTICATION_MODE, mode));
        EXPECT_FALSE(card.set(OID_802_11_SSID, ssidRecord("cafe")));
        EXPECT_EQ(card.block(), nullptr);
        EXPECT_TRUE(card.set<std::int32_t>(OID_802_11_AUTHENTICATION_MODE, Ndis802_11AuthModeOpen));
        EXPECT_TRUE(card.set(OID_802_11_SSID, ssidRecord("cafe")));
    }
    CardUnderTest card;
    EXPECT_FALSE(card.setBytes(OID_802_11_ADD_KEY, keyRecord(keyIndexTransmit, std::string(32, 'k'), false)));
    EXPECT_FALSE(card.card.state().settings.adHocWpaKey);
}

TEST(CardRequests, FiveGhzModesNeedAChannelOfThatBand)
{
    CardUnderTest card;
    EXPECT_TRUE(card.set<std::uint32_t>(VX_OID_802_11_PHY_MODE, 2));
    WiphyFacts wiphy = dualBandWiphy();
    for (ChannelFacts& channel : wiphy.channels)
        channel.isDisabled = channel.frequencyMhz > 5000;
    (void)card.card.wiphyRead(wiphy, card.nowMs);
    EXPECT_FALSE(card.set<std::uint32_t>(VX_OID_802_11_PHY_MODE, 2));
}

TEST(CardRequests, AnotherInfrastructureModeEndsTheLink)
{
    CardUnderTest card;
    card.joinOpen();
    EXPECT_TRUE(card.set<std::int32_t>(OID_802_11_INFRASTRUCTURE_MODE, Ndis802_11Infrastructure));
    EXPECT_EQ(card.word(OID_GEN_MEDIA_CONNECT_STATUS), NdisMediaStateConnected);
    EXPECT_TRUE(card.set<std::int32_t>(OID_802_11_INFRASTRUCTURE_MODE, Ndis802_11IBSS));
    EXPECT_NE(effectIn<LeaveNetwork>(card.effects), nullptr);
    EXPECT_EQ(card.word(OID_GEN_MEDIA_CONNECT_STATUS), NdisMediaStateDisconnected);
}

TEST(CardRequests, ListIsDeliveredInChunks)
{
    CardUnderTest card;
    std::vector<ScanEntry> many;
    for (std::uint8_t i = 0; i < 98; ++i)
        many.push_back(networkEntry("network " + std::to_string(i), i));
    card.hear(many);
    std::uint32_t count = 0;
    auto chunk = card.queryBytes(OID_802_11_BSSID_LIST, 4096);
    while (chunk && !chunk->empty()) {
        count += recordAt<NDIS_802_11_BSSID_LIST>(*chunk)->NumberOfItems;
        chunk = card.queryBytes(VX_OID_802_11_BSSID_LIST_NEXT, 4096);
    }
    EXPECT_EQ(count, 98U);
}

TEST(CardRequests, SignalOfTheListIsUsedIfTheDriverHasNoneOfTheStation)
{
    CardUnderTest card;
    card.hear({ networkEntry("cafe", 1) });
    card.joinOpen();
    EXPECT_EQ(card.query<std::int32_t>(OID_802_11_RSSI), -60);
    EXPECT_EQ(card.query<VX_802_11_LINK_COUNTERS>(VX_OID_802_11_LINK_COUNTERS)->ChannelQuality, 70U);
    StationInfo peer;
    peer.signalDbm = -44;
    card.card.stationsRead({ peer });
    EXPECT_EQ(card.query<std::int32_t>(OID_802_11_RSSI), -44);
}
