#include "driver/MacAddressText.h"
#include "driver/VX7100Access.h"
#include "driver/records/ChannelTable.h"
#include "driver/records/NdisRecords.h"
#include "driver/records/RegulatoryChannels.h"
#include "driver/records/VxRecords.h"
#include "tests/support/BssidListBuilder.h"
#include "tests/support/RecordedRequests.h"
#include "tests/support/RecordingAlertPanels.h"
#include "tests/support/RecordingTickClock.h"

#include <gtest/gtest.h>

#include <array>
#include <utility>
#include <vector>

namespace {

TEST(ChannelFreqTable, ContainsAllChannelsInTableOrder)
{
    const std::vector<std::pair<std::int32_t, std::uint32_t>> expected {
        { 1, 2412000 }, { 2, 2417000 }, { 3, 2422000 }, { 4, 2427000 }, { 5, 2432000 }, { 6, 2437000 }, { 7, 2442000 },
        { 8, 2447000 }, { 9, 2452000 }, { 10, 2457000 }, { 11, 2462000 }, { 12, 2467000 }, { 13, 2472000 },
        { 14, 2484000 }, // not on the 5 MHz grid
        { 34, 5170000 }, { 36, 5180000 }, { 38, 5190000 }, { 40, 5200000 }, { 42, 5210000 }, { 44, 5220000 },
        { 46, 5230000 }, { 48, 5240000 }, { 52, 5260000 }, { 56, 5280000 }, { 60, 5300000 }, { 64, 5320000 },
        { 100, 5500000 }, { 104, 5520000 }, { 108, 5540000 }, { 112, 5560000 }, { 116, 5580000 }, { 120, 5600000 },
        { 124, 5620000 }, { 128, 5640000 }, { 132, 5660000 }, { 136, 5680000 }, { 140, 5700000 }, //
        { 149, 5745000 }, { 153, 5765000 }, { 157, 5785000 }, { 161, 5805000 }, //
    };
    std::vector<std::pair<std::int32_t, std::uint32_t>> table;
    for (const auto& row : ChannelFreqTable)
        table.emplace_back(row.channel, row.frequencyKhz);
    EXPECT_EQ(table, expected);
    EXPECT_EQ(table.size(), static_cast<std::size_t>(G_nChanFreqCount));
}

TEST(ChannelOfFrequency, FindsOnlyExactFrequencies)
{
    for (const auto& row : ChannelFreqTable)
        EXPECT_EQ(channelOfFrequency(row.frequencyKhz), row.channel);
    EXPECT_EQ(channelOfFrequency(2419000), -1);
    EXPECT_EQ(channelOfFrequency(0), -1);
    EXPECT_EQ(channelOfFrequency(2412), -1);
}

template <std::size_t size> std::vector<int> channelsOf(const std::array<std::uint8_t, size>& list)
{
    return { list.begin(), list.end() };
}

TEST(RegulatoryChannels, MatchTheListOfEachDomain)
{
    using Channels = std::vector<int>;
    EXPECT_EQ(channelsOf(Qv24Ghz_FCC), (Channels { 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11 }));
    EXPECT_EQ(channelsOf(Qv24Ghz_IC), (Channels { 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11 }));
    EXPECT_EQ(channelsOf(Qv24Ghz_ESTI), (Channels { 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13 }));
    EXPECT_EQ(channelsOf(Qv24Ghz_SPAIN), (Channels { 10, 11 }));
    EXPECT_EQ(channelsOf(Qv24Ghz_FRANCE), (Channels { 10, 11, 12, 13 }));
    EXPECT_EQ(channelsOf(Qv24Ghz_MKK), (Channels { 14 }));
    EXPECT_EQ(channelsOf(Qv24Ghz_MKK1), (Channels { 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14 }));
    EXPECT_EQ(channelsOf(Qv24Ghz_ISRAEL), (Channels { 3, 4, 5, 6, 7, 8, 9 }));
    EXPECT_EQ(channelsOf(Qv5Ghz_UNII), (Channels { 36, 40, 44, 48, 52, 56, 60, 64, 149, 153, 157, 161 }));
    EXPECT_EQ(channelsOf(Qv5Ghz_MMAC), (Channels { 34, 38, 42, 46 }));
    EXPECT_EQ(channelsOf(Qv5Ghz_HyperLAN2),
        (Channels { 36, 40, 44, 48, 52, 56, 60, 64, 100, 104, 108, 112, 116, 120, 124, 128, 132, 136, 140 }));
}

TEST(MacAddressText, IsUpperCaseWithDashes)
{
    EXPECT_EQ(macAddressText({ 0x00, 0x0A, 0xFF, 0x10, 0x9B, 0xC0 }), QStringLiteral("00-0A-FF-10-9B-C0"));
}

TEST(NdisRecords, SsidIsALengthFollowedBy32Bytes)
{
    NDIS_802_11_SSID ssid {};
    ssid.SsidLength = 2;
    ssid.Ssid[0] = 'h';
    ssid.Ssid[1] = 'i';
    Bytes expected = bytesOf({
        2, 0, 0, 0, // SsidLength
        'h', 'i', // Ssid
    });
    expected.resize(36);
    EXPECT_EQ(bytesOfRecord(ssid), expected);
}

TEST(NdisRecords, ConfigurationIsEightWords)
{
    const NDIS_802_11_CONFIGURATION configuration { 32, 100, 2, 2412000, { 16, 3, 4, 0x0102 } };
    EXPECT_EQ(bytesOfRecord(configuration),
        bytesOf({
            32, 0, 0, 0, // Length
            100, 0, 0, 0, // BeaconPeriod
            2, 0, 0, 0, // ATIMWindow
            0xE0, 0xCD, 0x24, 0, // DSConfig
            16, 0, 0, 0, // FHConfig.Length
            3, 0, 0, 0, // FHConfig.HopPattern
            4, 0, 0, 0, // FHConfig.HopSet
            2, 1, 0, 0, // FHConfig.DwellTime
        }));
}

TEST(NdisRecords, NetworkTypeListIsACountFollowedByFourTypes)
{
    const NDIS_802_11_NETWORK_TYPE_LIST types { 3, { Ndis802_11DS, Ndis802_11OFDM24, Ndis802_11OFDM5, 0 } };
    EXPECT_EQ(bytesOfRecord(types),
        bytesOf({
            3, 0, 0, 0, // NumberOfItems
            1, 0, 0, 0, // NetworkType: 802.11b
            3, 0, 0, 0, // 802.11g
            2, 0, 0, 0, // 802.11a
            0, 0, 0, 0, // unused
        }));
}

TEST(NdisRecords, BssidEntryHasAFixedPartOf128Bytes)
{
    WLAN_BSSID_EX entry {};
    entry.Length = 0x0180;
    entry.MacAddress = { 0x00, 0x11, 0x22, 0x33, 0x44, 0x55 };
    entry.Ssid = { 4, { 'c', 'a', 'f', 'e' } };
    entry.Privacy = 1;
    entry.Rssi = -65;
    entry.NetworkTypeInUse = Ndis802_11OFDM24;
    entry.Configuration = { 32, 100, 0, 2437000, { 0, 0, 0, 0 } };
    entry.InfrastructureMode = Ndis802_11Infrastructure;
    entry.SupportedRates = { 0x82, 0x84, 0x8B, 0x96 };
    entry.IELength = 0x010C;
    entry.Timestamp = { 1, 2, 3, 4, 5, 6, 7, 8 };
    entry.BeaconInterval = 100;
    entry.Capabilities = 0x0431;
    Bytes expected = bytesOf({
        0x80, 1, 0, 0, // Length
        0x00, 0x11, 0x22, 0x33, 0x44, 0x55, // MacAddress
        0, 0, // Reserved
        4, 0, 0, 0, 'c', 'a', 'f', 'e', // Ssid
    });
    expected.resize(48);
    append(expected,
        bytesOf({
            1, 0, 0, 0, // Privacy
            0xBF, 0xFF, 0xFF, 0xFF, // Rssi
            3, 0, 0, 0, // NetworkTypeInUse
            32, 0, 0, 0, 100, 0, 0, 0, 0, 0, 0, 0, 0x88, 0x2F, 0x25, 0, // Configuration
            0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, // Configuration.FHConfig
            1, 0, 0, 0, // InfrastructureMode
            0x82, 0x84, 0x8B, 0x96, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, // SupportedRates
            0x0C, 1, 0, 0, // IELength
            1, 2, 3, 4, 5, 6, 7, 8, // Timestamp
            100, 0, // BeaconInterval
            0x31, 4, // Capabilities
        }));
    EXPECT_EQ(bytesOfRecord(entry), expected);
}

TEST(NdisRecords, KeyHas28BytesBeforeItsMaterial)
{
    const NDIS_802_11_KEY key { 52, keyIndexTransmit | 1, 13, { 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF }, {},
        0x0807060504030201 };
    EXPECT_EQ(bytesOfRecord(key),
        bytesOf({
            52, 0, 0, 0, // Length: KeyLength + 39
            1, 0, 0, 0x80, // KeyIndex
            13, 0, 0, 0, // KeyLength
            0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, // BSSID
            0, 0, // padding
            1, 2, 3, 4, 5, 6, 7, 8, // KeyRSC
        }));
}

TEST(NdisRecords, RemoveKeyIs16Bytes)
{
    const NDIS_802_11_REMOVE_KEY record { 16, 2, { 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF }, {} };
    EXPECT_EQ(bytesOfRecord(record),
        bytesOf({
            16, 0, 0, 0, // Length
            2, 0, 0, 0, // KeyIndex
            0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, // BSSID
            0, 0, // padding
        }));
}

TEST(NdisRecords, StatisticsCountersFollowTheLengthWithoutPadding)
{
    NDIS_802_11_STATISTICS statistics {};
    statistics.Length = 100;
    statistics.TransmittedFragmentCount = 0x0102030405060708;
    statistics.FCSErrorCount = -1;
    const Bytes bytes = bytesOfRecord(statistics);
    EXPECT_EQ(Bytes(bytes.begin(), bytes.begin() + 12), bytesOf({ 100, 0, 0, 0, 8, 7, 6, 5, 4, 3, 2, 1 }));
    EXPECT_EQ(Bytes(bytes.end() - 8, bytes.end()), bytesOf({ 255, 255, 255, 255, 255, 255, 255, 255 }));
}

TEST(VxRecords, StaConfigIsEightWordsInOrder)
{
    const VX_802_11_STA_CONFIG configuration { 1, 2, 3, 4, 5, 6, 7, 8 };
    const Bytes bytes = bytesOfRecord(configuration);
    for (std::size_t word = 0; word < 8; ++word)
        EXPECT_EQ(bytes[word * 4], static_cast<std::byte>(word + 1));
}

TEST(VxRecords, LinkCountersAreFourWords)
{
    const VX_802_11_LINK_COUNTERS counters { 108, 90, 0x01020304, 0x05060708 };
    EXPECT_EQ(bytesOfRecord(counters),
        bytesOf({
            108, 0, 0, 0, // TxRate
            90, 0, 0, 0, // ChannelQuality
            4, 3, 2, 1, // TxCount
            8, 7, 6, 5, // RxCount
        }));
}

// The bytes 1, 2, 3 and so on.
Bytes countingBytes(int size)
{
    Bytes bytes;
    for (int number = 1; number <= size; ++number)
        bytes.push_back(static_cast<std::byte>(number));
    return bytes;
}

struct QueryRecord : testing::Test {
    RecordingIORegistry registry;
    RecordingTickClock clock;
    RecordingAlertPanels alerts;
    VX7100Access adapter { registry, clock, alerts };
    std::array<VX_802_11_LINK_COUNTERS, 2> records {}; // only the first is queried

    void queryWithReplyOf(int size)
    {
        registry.answer(VX_OID_802_11_LINK_COUNTERS, countingBytes(size));
        records[0].RxCount = 0xFFFFFFFF;
        EXPECT_TRUE(queryRecord(adapter, VX_OID_802_11_LINK_COUNTERS, records[0]));
    }
};

TEST_F(QueryRecord, FillsTheRecordFromAReplyOfItsSize)
{
    queryWithReplyOf(16);
    EXPECT_EQ(bytesOfRecord(records[0]), countingBytes(16));
}

TEST_F(QueryRecord, LeavesZerosAfterAReplyThatIsOneByteShort)
{
    queryWithReplyOf(15);
    Bytes expected = countingBytes(15);
    expected.push_back(std::byte { 0 });
    EXPECT_EQ(bytesOfRecord(records[0]), expected);
}

TEST_F(QueryRecord, TruncatesAReplyThatIsOneByteTooLong)
{
    queryWithReplyOf(17);
    EXPECT_EQ(bytesOfRecord(records[0]), countingBytes(16));
    EXPECT_EQ(bytesOfRecord(records[1]), Bytes(16));
}

} // namespace
