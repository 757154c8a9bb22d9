#include "services/simulator/card/ScanList.h"

#include "tests/services/simulator/card/CardUnderTest.h"

#include <gtest/gtest.h>

namespace {

HeardNetwork heard(std::uint8_t number, std::int32_t signalDbm = -60)
{
    return { openNetwork("network", number, signalDbm), signalDbm };
}

std::vector<WLAN_BSSID_EX> entries(const Bytes& chunk)
{
    std::vector<WLAN_BSSID_EX> result;
    const auto head = recordAt<NDIS_802_11_BSSID_LIST>(chunk);
    std::size_t offset = sizeof(NDIS_802_11_BSSID_LIST);
    for (std::uint32_t i = 0; head && i < head->NumberOfItems; ++i) {
        const auto entry = recordAt<WLAN_BSSID_EX>(chunk, offset);
        if (!entry)
            break;
        result.push_back(*entry);
        offset += entry->Length;
    }
    EXPECT_EQ(offset, chunk.size());
    return result;
}

void runScan(ScanList& list, const std::vector<HeardNetwork>& seen)
{
    list.startScan(0);
    list.finishScan(seen);
}

} // namespace

TEST(ScanList, ScanTakes1500Ms)
{
    ScanList list;
    EXPECT_FALSE(list.isScanDone(10'000));
    list.startScan(1000);
    list.startScan(2000); // joins the running scan
    EXPECT_FALSE(list.isScanDone(2499));
    EXPECT_TRUE(list.isScanDone(2500));
    list.finishScan({});
    EXPECT_FALSE(list.isScanDone(2500));
}

TEST(ScanList, DropsANetworkMissedByThreeScansInARow)
{
    ScanList list;
    runScan(list, { heard(1), heard(2) });
    runScan(list, { heard(2) });
    runScan(list, { heard(2) });
    EXPECT_EQ(list.size(), 2U);
    runScan(list, { heard(2) });
    const auto left = entries(list.firstChunk(0));
    ASSERT_EQ(left.size(), 1U);
    EXPECT_EQ(left[0].MacAddress, heard(2).network.bssid);
}

TEST(ScanList, SeeingANetworkAgainRenewsItsEntry)
{
    ScanList list;
    runScan(list, { heard(1, -60) });
    runScan(list, {});
    runScan(list, {});
    runScan(list, { heard(1, -70) });
    runScan(list, {});
    runScan(list, {});
    const auto left = entries(list.firstChunk(0));
    ASSERT_EQ(left.size(), 1U);
    EXPECT_EQ(valueOf(left[0].Rssi), -70);
}

TEST(ScanList, KeepsTheAssociatedNetwork)
{
    ScanList list;
    for (int i = 0; i < 10; ++i) {
        runScan(list, {});
        list.keep(heard(9));
    }
    EXPECT_EQ(list.size(), 1U);
}

TEST(ScanList, AScanBetweenChunksDoesNotChangeTheDelivery)
{
    ScanList list;
    std::vector<HeardNetwork> many;
    for (std::uint8_t i = 0; i < 30; ++i)
        many.push_back(heard(i));
    runScan(list, many);
    const std::size_t first = entries(list.firstChunk(0)).size();
    runScan(list, { heard(200) });
    EXPECT_EQ(first + entries(list.nextChunk()).size(), 30U);
    EXPECT_EQ(entries(list.firstChunk(0)).size(), first);
}

TEST(ScanList, ForgettingAllCancelsARunningScan)
{
    ScanList list;
    runScan(list, { heard(1) });
    list.startScan(0);
    list.forgetAll();
    EXPECT_EQ(list.size(), 0U);
    EXPECT_FALSE(list.isScanDone(100'000));
}
