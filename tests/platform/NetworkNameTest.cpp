#include "platform/NetworkName.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string_view>

namespace {

NetworkName upToZero(std::string_view bytes)
{
    return NetworkName::upToZero(std::as_bytes(std::span(bytes)));
}

NDIS_802_11_SSID recordOf(std::string_view bytes, std::uint32_t length)
{
    NDIS_802_11_SSID record { length, {} };
    std::copy(bytes.begin(), bytes.end(), record.Ssid.begin());
    return record;
}

TEST(NetworkName, ReadsAsManyBytesOfARecordAsItsLengthSays)
{
    EXPECT_EQ(NetworkName::fromRecord(recordOf("harbour", 4)).bytes(), "harb");
    EXPECT_TRUE(NetworkName::fromRecord(recordOf("harbour", 0)).isEmpty());
    EXPECT_EQ(NetworkName::fromRecord(recordOf({ "a\0b", 3 }, 3)).bytes(), QByteArray("a\0b", 3));
}

TEST(NetworkName, DoesNotReadBeyondARecordWhoseLengthIsTooLarge)
{
    const std::string_view full = "thirty-two letters of a network!";
    for (const std::uint32_t length : { 32U, 33U, 0x80000000U, 0xFFFFFFFFU })
        EXPECT_EQ(NetworkName::fromRecord(recordOf(full, length)).bytes(), full.data()) << length;
}

TEST(NetworkName, ReadsBytesUpToTheFirstZero)
{
    EXPECT_EQ(upToZero({ "ab\0c", 4 }).bytes(), "ab");
    EXPECT_EQ(upToZero("ab").bytes(), "ab");
    EXPECT_TRUE(upToZero({ "\0b", 2 }).isEmpty());
    EXPECT_TRUE(upToZero({}).isEmpty());
}

TEST(NetworkName, MakesAZeroFilledRecord)
{
    const NDIS_802_11_SSID record = NetworkName("cafe").record();
    const NDIS_802_11_SSID expected = recordOf("cafe", 4);
    EXPECT_EQ(std::memcmp(&record, &expected, sizeof(record)), 0);
}

TEST(NetworkName, TruncatesARecordTo32Bytes)
{
    const NetworkName name(QByteArray(31, 'a') + "bc");
    EXPECT_EQ(NetworkName::fromRecord(name.record()).bytes(), QByteArray(31, 'a') + "b");
    EXPECT_EQ(name.truncated().bytes(), QByteArray(31, 'a') + "b");
}

TEST(NetworkName, RestoresItsBytesFromItsText)
{
    const NetworkName name(QByteArray("caf\xE9\0 ", 6));
    EXPECT_EQ(NetworkName::fromText(name.text()), name);
    EXPECT_EQ(name.displayText(), u"caf\uFFFD\uFFFD "_qs);
}

TEST(NetworkName, HasNoToolTipForAPlainName)
{
    EXPECT_EQ(NetworkName("cafe").toolTip(), QString());
    EXPECT_EQ(NetworkName("caf\xC3\xA9").toolTip(), QString());
}

TEST(NetworkName, ToolTipListsBytesThatTheTextDoesNotShow)
{
    EXPECT_TRUE(NetworkName("\xFF\x61\xFE").toolTip().endsWith(u"ff 61 fe"_qs));
    EXPECT_TRUE(NetworkName("a\x07").toolTip().endsWith(u"61 07"_qs));
    EXPECT_TRUE(NetworkName("a ").toolTip().endsWith(u"61 20"_qs));
}

TEST(NetworkName, EmptyNameHasAPlaceholderAndAToolTip)
{
    EXPECT_EQ(NetworkName::hiddenPlaceholder(), u"(hidden)"_qs);
    EXPECT_FALSE(NetworkName().toolTip().isEmpty());
    EXPECT_TRUE(NetworkName().displayText().isEmpty());
}

} // namespace
