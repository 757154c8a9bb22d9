#include "services/card/ListDelivery.h"

#include "driver/records/NdisRecords.h"

#include <gtest/gtest.h>

namespace {

constexpr std::size_t headBytes = sizeof(NDIS_802_11_BSSID_LIST);

Bytes entry(std::size_t size, unsigned value = 0)
{
    return Bytes(size, static_cast<std::byte>(value));
}

std::uint32_t countOf(const Bytes& chunk)
{
    const auto head = recordAt<NDIS_802_11_BSSID_LIST>(chunk);
    return head ? head->NumberOfItems : 0;
}

} // namespace

TEST(ListDelivery, DeliversAnEmptyListAsAHeadWithoutEntries)
{
    ListDelivery delivery;
    EXPECT_TRUE(delivery.next().empty());
    EXPECT_EQ(delivery.start({}), Bytes(headBytes));
    EXPECT_TRUE(delivery.next().empty());
}

TEST(ListDelivery, FillsAChunkToTheLastByte)
{
    ListDelivery delivery;
    const std::size_t half = (ListDelivery::chunkBytes - headBytes) / 2;
    const Bytes chunk = delivery.start({ entry(half), entry(half) });
    EXPECT_EQ(chunk.size(), ListDelivery::chunkBytes);
    EXPECT_EQ(countOf(chunk), 2U);
    EXPECT_TRUE(delivery.next().empty());

    EXPECT_EQ(countOf(delivery.start({ entry(half), entry(half + 1) })), 1U);
    EXPECT_EQ(countOf(delivery.next()), 1U);
    EXPECT_TRUE(delivery.next().empty());
}

TEST(ListDelivery, DeliversWholeEntriesInOrder)
{
    std::vector<Bytes> entries;
    Bytes expected;
    for (unsigned i = 0; i < 100; ++i) {
        entries.push_back(entry(150 + i, i));
        expected.insert(expected.end(), entries.back().begin(), entries.back().end());
    }
    ListDelivery delivery;
    Bytes delivered;
    std::uint32_t count = 0;
    for (Bytes chunk = delivery.start(entries); !chunk.empty(); chunk = delivery.next()) {
        EXPECT_LE(chunk.size(), ListDelivery::chunkBytes);
        delivered.insert(delivered.end(), chunk.begin() + headBytes, chunk.end());
        count += countOf(chunk);
    }
    EXPECT_EQ(delivered, expected);
    EXPECT_EQ(count, 100U);
}

TEST(ListDelivery, SkipsEntriesLargerThanAChunk)
{
    ListDelivery delivery;
    EXPECT_EQ(countOf(delivery.start({ entry(200), entry(ListDelivery::chunkBytes), entry(200) })), 2U);
    EXPECT_TRUE(delivery.next().empty());
}
