#include "services/linux/card/NetworkList.h"

#include "driver/records/NdisRecords.h"
#include "tests/services/linux/card/CardUnderTest.h"

#include <gtest/gtest.h>

namespace {

ScanEntry aged(ScanEntry entry, std::uint32_t ageMs)
{
    entry.ageMs = ageMs;
    return entry;
}

std::vector<int> lastOctets(const NetworkList& list)
{
    std::vector<int> found;
    for (const ListedNetwork& network : list.networks())
        found.push_back(network.entry.bssid.back());
    return found;
}

} // namespace

TEST(NetworkList, KeepsTheOrderInWhichNetworksWereFirstSeen)
{
    NetworkList list;
    list.update({ networkEntry("b", 2), networkEntry("a", 1) }, 0);
    list.update({ networkEntry("c", 3), networkEntry("a", 1), networkEntry("b", 2) }, 100);
    EXPECT_EQ(lastOctets(list), (std::vector { 2, 1, 3 }));
}

TEST(NetworkList, ForgetsANetworkThatSeveralScansOfItsChannelMissed)
{
    NetworkList list;
    list.update({ networkEntry("a", 1, 2412), networkEntry("b", 2, 2437) }, 0);
    for (int scan = 1; scan <= NetworkList::scansUntilForgotten; ++scan) {
        EXPECT_EQ(list.networks().size(), 2U);
        list.scanEnded({ 2412 }, scan * 100, scan * 100 + 50);
    }
    EXPECT_EQ(lastOctets(list), (std::vector { 2 }));
}

TEST(NetworkList, NetworkThatWasSeenDuringAScanIsNotMissedByIt)
{
    NetworkList list;
    list.update({ networkEntry("a", 1) }, 10);
    for (int report = 0; report < NetworkList::scansUntilForgotten; ++report)
        list.scanEnded({ 2412 }, 10, 50);
    EXPECT_EQ(list.networks().size(), 1U);
}

TEST(NetworkList, NetworkThatIsSeenAgainStartsOver)
{
    NetworkList list;
    list.update({ networkEntry("a", 1) }, 0);
    for (int scan = 1; scan <= 10; ++scan) {
        if (scan % NetworkList::scansUntilForgotten == 0)
            list.update({ networkEntry("a", 1) }, scan * 100 + 10);
        list.scanEnded({ 2412 }, scan * 100, scan * 100 + 50);
    }
    EXPECT_EQ(list.networks().size(), 1U);
}

TEST(NetworkList, OldEntryOfTheKernelIsNoSighting)
{
    NetworkList list;
    list.update({ networkEntry("a", 1) }, 0);
    for (int scan = 1; scan <= NetworkList::scansUntilForgotten; ++scan) {
        list.update({ aged(networkEntry("a", 1), static_cast<std::uint32_t>(scan * 100)) }, scan * 100);
        list.scanEnded({ 2412 }, scan * 100 - 50, scan * 100);
    }
    EXPECT_TRUE(list.networks().empty());
}

TEST(NetworkList, NetworkOnAChannelThatIsNoLongerScannedAges)
{
    NetworkList list;
    ScanEntry linked = networkEntry("linked", 2, 5180);
    linked.isAssociated = true;
    list.update({ networkEntry("a", 1, 5180), linked }, 0);
    list.scanEnded({ 2412 }, NetworkList::maxAgeMs - 1, NetworkList::maxAgeMs - 1);
    EXPECT_EQ(list.networks().size(), 2U);
    list.scanEnded({ 2412 }, NetworkList::maxAgeMs, NetworkList::maxAgeMs);
    EXPECT_EQ(lastOctets(list), (std::vector { 2 }));
}

TEST(NetworkList, LeavesOutChannelsWithoutANumber)
{
    NetworkList list;
    list.update({ networkEntry("six", 1, 5955), networkEntry("far", 2, 5825), networkEntry("near", 3, 5805) }, 0);
    EXPECT_EQ(lastOctets(list), (std::vector { 3 }));
}

TEST(NetworkList, HiddenNetworkKeepsTheNameThatTheKernelKnows)
{
    NetworkList list;
    list.update({ aged(networkEntry("", 1), 10), aged(networkEntry("secret", 1), 900) }, 1000);
    ASSERT_EQ(list.networks().size(), 1U);
    EXPECT_EQ(networkName(list.networks().front().entry.elements), octets("secret"));
    EXPECT_EQ(list.networks().front().seenMs, 990);
}

TEST(NetworkList, NetworkThatChangedItsChannelIsListedOnTheNewOne)
{
    NetworkList list;
    list.update({ aged(networkEntry("a", 1, 2412), 5000), aged(networkEntry("a", 1, 2437), 10) }, 10'000);
    ASSERT_EQ(list.networks().size(), 1U);
    EXPECT_EQ(list.networks().front().entry.frequencyMhz, 2437U);
}

TEST(NetworkList, EncodesWhatTheKernelSays)
{
    NetworkList list;
    ScanEntry entry = rsnEntry("cafe", 1);
    entry.frequencyMhz = 5180;
    list.update({ entry }, 0);
    const auto records = list.encoded();
    ASSERT_EQ(records.size(), 1U);
    const auto record = recordAt<WLAN_BSSID_EX>(records.front());
    EXPECT_EQ(record->MacAddress, entry.bssid);
    EXPECT_EQ(valueOf(record->Ssid.SsidLength), 4U);
    EXPECT_EQ(valueOf(record->Privacy), 1U);
    EXPECT_EQ(valueOf(record->Rssi), -60);
    EXPECT_EQ(valueOf(record->NetworkTypeInUse), std::uint32_t { Ndis802_11OFDM5 });
    EXPECT_EQ(valueOf(record->Configuration.DSConfig), 5180000U);
    EXPECT_EQ(valueOf(record->InfrastructureMode), std::int32_t { Ndis802_11Infrastructure });
    EXPECT_EQ(std::to_integer<int>(records.front()[sizeof(WLAN_BSSID_EX)]), elementVendor);
}

TEST(NetworkList, LeavesOutTheWeakestIfTheClientHasNoRoomForAll)
{
    NetworkList list;
    std::vector<ScanEntry> many;
    for (int i = 0; i < 600; ++i) {
        ScanEntry entry = networkEntry("network", static_cast<std::uint8_t>(i));
        entry.bssid[4] = static_cast<std::uint8_t>(i >> 8);
        entry.signalDbm = i % 2 == 0 ? -40 : -90;
        many.push_back(entry);
    }
    list.update(many, 0);
    std::size_t total = sizeof(NDIS_802_11_BSSID_LIST);
    int weak = 0;
    for (const Bytes& record : list.encoded()) {
        total += record.size();
        weak += recordAt<WLAN_BSSID_EX>(record)->Rssi == -90 ? 1 : 0;
    }
    EXPECT_LE(total, 65'536U);
    EXPECT_GT(total, 65'000U);
    EXPECT_LT(weak, 300);
}

TEST(NetworkList, LinkedNetworkIsListedHoweverWeakItIs)
{
    NetworkList list;
    std::vector<ScanEntry> many;
    for (int i = 0; i < 600; ++i) {
        ScanEntry entry = networkEntry("network", static_cast<std::uint8_t>(i));
        entry.bssid[4] = static_cast<std::uint8_t>(i >> 8);
        many.push_back(entry);
    }
    many.back().signalDbm = -99;
    many.back().isAssociated = true;
    list.update(many, 0);
    const auto records = list.encoded();
    EXPECT_LT(records.size(), many.size());
    EXPECT_EQ(valueOf(recordAt<WLAN_BSSID_EX>(records.back())->Rssi), -99);
}

TEST(ChannelNumbers, ChannelsWithoutOneAreReportedAsTheNearest)
{
    EXPECT_EQ(numberedFrequencyMhz(2437), 2437U);
    EXPECT_EQ(numberedFrequencyMhz(5720), 5700U); // 144 as 140
    EXPECT_EQ(numberedFrequencyMhz(5825), 5805U); // 165 as 161
    EXPECT_EQ(numberedFrequencyMhz(5955), 5805U);
}
