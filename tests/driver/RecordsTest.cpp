#include "driver/MacAddressText.h"
#include "driver/records/ChannelTable.h"
#include "driver/records/DisplayNames.h"
#include "driver/records/NdisRecords.h"
#include "driver/records/Oids.h"
#include "driver/records/RegulatoryChannels.h"
#include "driver/records/VxRecords.h"
#include "tests/support/BssidListBuilder.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

template <typename Record> Bytes wireBytes(const Record& record)
{
    Bytes bytes(sizeof(record));
    std::memcpy(bytes.data(), &record, sizeof(record));
    return bytes;
}

TEST(ChannelFreqTable, FollowsTheTwoRastersInTableOrder)
{
    ASSERT_EQ(ChannelFreqTable.size(), 41u);
    EXPECT_EQ(ChannelFreqTable[0].channel, 1);
    EXPECT_EQ(ChannelFreqTable[0].frequencyKhz, 2412000u);
    EXPECT_EQ(ChannelFreqTable[12].frequencyKhz, 2472000u);
    EXPECT_EQ(ChannelFreqTable[13].channel, 14);
    EXPECT_EQ(ChannelFreqTable[13].frequencyKhz, 2484000u);
    EXPECT_EQ(ChannelFreqTable[14].channel, 34);
    EXPECT_EQ(ChannelFreqTable[14].frequencyKhz, 5170000u);
    EXPECT_EQ(ChannelFreqTable[35].channel, 136);
    EXPECT_EQ(ChannelFreqTable[35].frequencyKhz, 5680000u);
    EXPECT_EQ(ChannelFreqTable[40].channel, 161);
    EXPECT_EQ(ChannelFreqTable[40].frequencyKhz, 5805000u);
}

TEST(ChannelOfFrequency, FindsEveryRowAndNothingElse)
{
    for (const auto& row : ChannelFreqTable)
        EXPECT_EQ(channelOfFrequency(row.frequencyKhz), row.channel);
    EXPECT_EQ(channelOfFrequency(2419000), -1);
    EXPECT_EQ(channelOfFrequency(0), -1);
    EXPECT_EQ(channelOfFrequency(2412), -1);
}

TEST(DisplayNames, AreEmptyForStatesThatAreNeverShown)
{
    EXPECT_EQ(displayName(strAryEncryption, 0), "WEP");
    EXPECT_EQ(displayName(strAryEncryption, 1), "Not Used");
    EXPECT_EQ(displayName(strAryEncryption, 4), "TKIP");
    EXPECT_EQ(displayName(strAryEncryption, 6), "AES");
    for (const int status : { 2, 3, 5, 7 })
        EXPECT_EQ(displayName(strAryEncryption, status), "");
    EXPECT_EQ(displayName(strAryNetworkType, 0), "Ad Hoc");
    EXPECT_EQ(displayName(strAryNetworkType, 1), "Infrastructure");
    EXPECT_EQ(displayName(strAryNetworkType, 2), "Automatic");
    EXPECT_EQ(displayName(strAryAuthenType, 0), "Open System");
    EXPECT_EQ(displayName(strAryAuthenType, 1), "Shared Key");
    EXPECT_EQ(displayName(strAryAuthenType, 2), "");
    EXPECT_EQ(displayName(strAryAuthenType, 3), "WPA");
    EXPECT_EQ(displayName(strAryAuthenType, 4), "WPA-PSK");
    EXPECT_EQ(displayName(strAryAuthenType, 5), "WPA-None");
}

TEST(DisplayNames, AreEmptyBeyondTheTable)
{
    EXPECT_EQ(displayName(strAryEncryption, 8), "");
    EXPECT_EQ(displayName(strAryNetworkType, -1), "");
    EXPECT_EQ(displayName(strAryNetworkType, 0x7FFFFFFF), "");
}

TEST(RegulatoryChannels, HoldTheListsOfEachDomain)
{
    EXPECT_EQ(Qv24Ghz_FCC.back(), 11);
    EXPECT_EQ(Qv24Ghz_IC, Qv24Ghz_FCC);
    EXPECT_EQ(Qv24Ghz_ESTI.back(), 13);
    EXPECT_EQ(Qv24Ghz_SPAIN, (std::array<std::uint8_t, 2> { 10, 11 }));
    EXPECT_EQ(Qv24Ghz_FRANCE, (std::array<std::uint8_t, 4> { 10, 11, 12, 13 }));
    EXPECT_EQ(Qv24Ghz_MKK, (std::array<std::uint8_t, 1> { 14 }));
    EXPECT_EQ(Qv24Ghz_MKK1.size(), 14u);
    EXPECT_EQ(Qv24Ghz_ISRAEL, (std::array<std::uint8_t, 7> { 3, 4, 5, 6, 7, 8, 9 }));
    EXPECT_EQ(Qv5Ghz_UNII, (std::array<std::uint8_t, 12> { 36, 40, 44, 48, 52, 56, 60, 64, 149, 153, 157, 161 }));
    EXPECT_EQ(Qv5Ghz_MMAC, (std::array<std::uint8_t, 4> { 34, 38, 42, 46 }));
    EXPECT_EQ(Qv5Ghz_HyperLAN2.front(), 36);
    EXPECT_EQ(Qv5Ghz_HyperLAN2.back(), 140);
}

TEST(Oids, CarryTheSetFlagInBit23)
{
    EXPECT_EQ(OID_802_11_BSSID_LIST_SCAN | oidSetFlag, 0x0D81011Au);
    EXPECT_EQ(VX_OID_802_11_RESET_COUNTERS | oidSetFlag, 0x0DF10103u);
    EXPECT_EQ(OID_802_11_INFRASTRUCTURE_MODE | oidSetFlag, 0x0D810108u);
    EXPECT_EQ(VX_OID_802_11_ADD_WPA | oidSetFlag, 0x0DF10116u);
}

TEST(MacAddressText, IsUpperCaseWithDashes)
{
    EXPECT_EQ(macAddressText({ 0x00, 0x0A, 0xFF, 0x10, 0x9B, 0xC0 }), QStringLiteral("00-0A-FF-10-9B-C0"));
}

TEST(NdisRecords, SsidIsItsLengthThenThirtyTwoBytes)
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
    EXPECT_EQ(wireBytes(ssid), expected);
}

TEST(NdisRecords, RemoveKeyIsSixteenBytes)
{
    const NDIS_802_11_REMOVE_KEY record { 16, 2, { 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF }, {} };
    EXPECT_EQ(wireBytes(record),
        bytesOf({
            16, 0, 0, 0, // Length
            2, 0, 0, 0, // KeyIndex
            0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, // BSSID
            0, 0, // padding
        }));
}

TEST(NdisRecords, StatisticsCountersFollowTheLengthWithoutAGap)
{
    NDIS_802_11_STATISTICS statistics {};
    statistics.Length = 100;
    statistics.TransmittedFragmentCount = 0x0102030405060708;
    statistics.FCSErrorCount = -1;
    const Bytes bytes = wireBytes(statistics);
    EXPECT_EQ(Bytes(bytes.begin(), bytes.begin() + 12), bytesOf({ 100, 0, 0, 0, 8, 7, 6, 5, 4, 3, 2, 1 }));
    EXPECT_EQ(Bytes(bytes.end() - 8, bytes.end()), bytesOf({ 255, 255, 255, 255, 255, 255, 255, 255 }));
}

TEST(VxRecords, StaConfigIsEightWordsInOrder)
{
    const VX_802_11_STA_CONFIG configuration { 1, 2, 3, 4, 5, 6, 7, 8 };
    const Bytes bytes = wireBytes(configuration);
    for (std::size_t word = 0; word < 8; ++word)
        EXPECT_EQ(bytes[word * 4], static_cast<std::byte>(word + 1));
}

} // namespace
