#include "driver/BssidList.h"

#include "tests/support/BssidListBuilder.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

std::vector<std::uint8_t> lastAddressBytes(Bytes& buffer)
{
    std::vector<std::uint8_t> result;
    BssidListWalk walk(buffer);
    while (const auto entry = walk.next())
        result.push_back(entry->fixedPart().MacAddress[5]);
    return result;
}

TEST(BssidListWalk, ReturnsTheEntriesInOrder)
{
    Bytes buffer = inBuffer(bssidList({ EntryBuilder("a", 1), EntryBuilder("b", 2), EntryBuilder("c", 3) }));
    EXPECT_EQ(lastAddressBytes(buffer), (std::vector<std::uint8_t> { 1, 2, 3 }));
}

TEST(BssidListWalk, StopsAtAZeroLengthRegardlessOfTheCount)
{
    Bytes buffer = inBuffer(bssidList(0xFFFFFFFF, { EntryBuilder("a", 1).bytes(), EntryBuilder("b", 2).bytes() }));
    EXPECT_EQ(lastAddressBytes(buffer), (std::vector<std::uint8_t> { 1, 2 }));
}

TEST(BssidListWalk, StopsAtAnEntryThatExtendsPastTheBuffer)
{
    EntryBuilder huge("b", 2);
    huge.keepLengths = true;
    huge.fixedPart.Length = 0xFFFFFFF0;
    Bytes buffer = inBuffer(bssidList({ EntryBuilder("a", 1), huge, EntryBuilder("c", 3) }));
    EXPECT_EQ(lastAddressBytes(buffer), (std::vector<std::uint8_t> { 1 }));
}

TEST(BssidListWalk, AcceptsALastEntryThatFillsTheBufferExactly)
{
    Bytes list = bssidList({ EntryBuilder("a", 1), EntryBuilder("b", 2) });
    EXPECT_EQ(lastAddressBytes(list), (std::vector<std::uint8_t> { 1, 2 }));
    list.pop_back();
    EXPECT_EQ(lastAddressBytes(list), (std::vector<std::uint8_t> { 1 }));
}

TEST(BssidListWalk, IsEmptyForABufferTooShortForACount)
{
    Bytes buffer = bytesOf({ 1, 0, 0 });
    EXPECT_EQ(bssidCount(buffer), 0u);
    EXPECT_FALSE(BssidListWalk(buffer).next().has_value());
    EXPECT_FALSE(BssidListWalk({}).next().has_value());
}

TEST(BssidListWalk, ReadsMissingFieldsOfATruncatedEntryAsZero)
{
    EntryBuilder shortEntry("a", 7);
    shortEntry.keepLengths = true;
    shortEntry.fixedPart.Length = 10;
    Bytes bytes = shortEntry.bytes();
    bytes.resize(10);
    Bytes buffer = inBuffer(bssidList(1, { bytes }), 14);
    const auto entry = BssidListWalk(buffer).next();
    ASSERT_TRUE(entry.has_value());
    EXPECT_EQ(entry->fixedPart().MacAddress[5], 7);
    EXPECT_EQ(entry->fixedPart().Rssi, 0);
}

TEST(BssidEntryAt, TakesAZeroBasedIndex)
{
    Bytes buffer = inBuffer(bssidList({ EntryBuilder("a", 1), EntryBuilder("b", 2) }));
    EXPECT_EQ(bssidEntryAt(buffer, 1)->fixedPart().MacAddress[5], 2);
    EXPECT_FALSE(bssidEntryAt(buffer, 2).has_value());
}

TEST(BssidEntry, BytesUpToZeroContinueIntoTheNextField)
{
    EntryBuilder full("12345678901234567890123456789012");
    full.fixedPart.Privacy = 1;
    Bytes buffer = inBuffer(bssidList({ full }));
    const auto name = BssidListWalk(buffer).next()->bytesUpToZero(16);
    ASSERT_EQ(name.size(), 33u);
    EXPECT_EQ(name[31], std::byte { '2' });
    EXPECT_EQ(name[32], std::byte { 1 });
}

TEST(BssidEntry, BytesUpToZeroStopAtTheEndOfTheEntry)
{
    EntryBuilder entry;
    entry.keepLengths = true;
    entry.fixedPart.Length = 20;
    std::fill(entry.fixedPart.Ssid.Ssid.begin(), entry.fixedPart.Ssid.Ssid.end(), std::uint8_t { 'x' });
    Bytes buffer = inBuffer(bssidList({ entry }));
    EXPECT_EQ(BssidListWalk(buffer).next()->bytesUpToZero(16).size(), 4u);
    EXPECT_TRUE(BssidListWalk(buffer).next()->bytesUpToZero(21).empty());
}

TEST(BssidEntry, ReadsZerosAndWritesNothingPastTheEntry)
{
    Bytes last = bssidList({ EntryBuilder() });
    EXPECT_EQ(BssidListWalk(last).next()->byteAt(1000000), 0);
    EXPECT_EQ(BssidListWalk(last).next()->littleEndian16At(sizeof(WLAN_BSSID_EX)), 0);
    EXPECT_EQ(BssidListWalk(last).next()->bigEndian32At(sizeof(WLAN_BSSID_EX) - 1), 0u);
    Bytes buffer = bssidList({ EntryBuilder(), EntryBuilder() });
    auto entry = *BssidListWalk(buffer).next();
    const Bytes before = buffer;
    entry.setLittleEndian16At(sizeof(WLAN_BSSID_EX), 0xFFFF);
    entry.setLittleEndian16At(sizeof(WLAN_BSSID_EX) - 1, 0xFFFF);
    entry.setLittleEndian16At(1000000, 0xFFFF);
    EXPECT_EQ(buffer, before);
}

TEST(AppendBssidChunk, AppendsAfterTheLastEntry)
{
    Bytes buffer = inBuffer(bssidList({ EntryBuilder("a", 1), EntryBuilder("b", 2) }));
    EXPECT_EQ(appendBssidChunk(buffer, bssidList({ EntryBuilder("c", 3), EntryBuilder("d", 4) })).appended, 2u);
    EXPECT_EQ(bssidCount(buffer), 4u);
    EXPECT_EQ(lastAddressBytes(buffer), (std::vector<std::uint8_t> { 1, 2, 3, 4 }));
}

// The end of the list is found by one step more than the list counts.
TEST(AppendBssidChunk, AppendsAfterAnEntryThatTheListDoesNotCount)
{
    Bytes buffer = inBuffer(bssidList({ EntryBuilder("a", 1), EntryBuilder("b", 2) }));
    buffer[0] = std::byte { 1 };
    EXPECT_EQ(appendBssidChunk(buffer, bssidList({ EntryBuilder("c", 3) })).appended, 1u);
    buffer[0] = std::byte { 3 };
    EXPECT_EQ(lastAddressBytes(buffer), (std::vector<std::uint8_t> { 1, 2, 3 }));
}

TEST(AppendBssidChunk, AppendsToAnEmptyList)
{
    Bytes buffer = inBuffer({});
    EXPECT_EQ(appendBssidChunk(buffer, bssidList({ EntryBuilder("c", 3) })).appended, 1u);
    EXPECT_EQ(lastAddressBytes(buffer), (std::vector<std::uint8_t> { 3 }));
}

TEST(AppendBssidChunk, StopsAtAZeroLengthAndCountsOnlyAppendedEntries)
{
    Bytes buffer = inBuffer(bssidList({ EntryBuilder("a", 1) }));
    EXPECT_EQ(appendBssidChunk(buffer, inBuffer(bssidList(100, { EntryBuilder("b", 2).bytes() }), 4096)).appended, 1u);
    EXPECT_EQ(bssidCount(buffer), 2u);
}

TEST(AppendBssidChunk, SkipsAnEntryThatTheChunkTruncates)
{
    Bytes buffer = inBuffer({});
    Bytes chunk = bssidList({ EntryBuilder("a", 1), EntryBuilder("b", 2) });
    chunk.pop_back();
    EXPECT_EQ(appendBssidChunk(buffer, chunk).appended, 1u);
    EXPECT_EQ(lastAddressBytes(buffer), (std::vector<std::uint8_t> { 1 }));
}

TEST(AppendBssidChunk, KeepsOnlyWholeEntriesWhenTheListIsFull)
{
    // Space for exactly three entries of 128 bytes.
    Bytes buffer = inBuffer(bssidList({ EntryBuilder("a", 1), EntryBuilder("b", 2) }), 4 + 3 * 128);
    const auto result = appendBssidChunk(buffer, bssidList({ EntryBuilder("c", 3), EntryBuilder("d", 4) }));
    EXPECT_EQ(result.appended, 1u);
    EXPECT_TRUE(result.listIsFull);
    EXPECT_EQ(bssidCount(buffer), 3u);
    EXPECT_EQ(lastAddressBytes(buffer), (std::vector<std::uint8_t> { 1, 2, 3 }));
}

TEST(AppendBssidChunk, AppendsNothingAfterAnEntryThatDidNotFit)
{
    EntryBuilder large("large", 2);
    large.elements.resize(200);
    Bytes buffer = inBuffer(bssidList({ EntryBuilder("a", 1) }), 4 + 3 * 128);
    const auto result = appendBssidChunk(buffer, bssidList({ large, EntryBuilder("small", 3) }));
    EXPECT_EQ(result.appended, 0u);
    EXPECT_TRUE(result.listIsFull);
    EXPECT_EQ(lastAddressBytes(buffer), (std::vector<std::uint8_t> { 1 }));
}

TEST(AppendBssidChunk, IsNotFullIfTheLastEntryJustFits)
{
    Bytes buffer = inBuffer(bssidList({ EntryBuilder("a", 1) }), 4 + 2 * 128);
    const auto result = appendBssidChunk(buffer, bssidList({ EntryBuilder("b", 2) }));
    EXPECT_EQ(result.appended, 1u);
    EXPECT_FALSE(result.listIsFull);
}

TEST(AppendBssidChunk, SaturatesTheCount)
{
    for (const std::uint32_t wrongCount : { 0xFFFFFFFFu, 0xFFFFFFFEu }) {
        Bytes buffer = inBuffer(bssidList(wrongCount, { EntryBuilder("a", 1).bytes() }));
        const auto chunk = bssidList({ EntryBuilder("b", 2), EntryBuilder("c", 3) });
        EXPECT_EQ(appendBssidChunk(buffer, chunk).appended, 2u);
        EXPECT_EQ(bssidCount(buffer), 0xFFFFFFFFu);
        EXPECT_EQ(lastAddressBytes(buffer), (std::vector<std::uint8_t> { 1, 2, 3 }));
    }
}

TEST(AppendBssidChunk, IgnoresAChunkTooShortForACount)
{
    Bytes buffer = inBuffer(bssidList({ EntryBuilder("a", 1) }));
    EXPECT_EQ(appendBssidChunk(buffer, bytesOf({ 9, 0 })).appended, 0u);
    EXPECT_EQ(bssidCount(buffer), 1u);
}

} // namespace
