#include "services/simulator/scenario/ScenarioValues.h"

#include <gtest/gtest.h>

namespace {

TEST(HexDigits, ConvertBothWays)
{
    std::string bytes;
    for (int octet = 0; octet < 256; ++octet)
        bytes.push_back(static_cast<char>(octet));
    EXPECT_EQ(bytesOfHex(hexOfBytes(bytes)), bytes);
    EXPECT_EQ(hexOfBytes(std::string("\x00\x7F\xE9", 3)), "007FE9");
    EXPECT_EQ(bytesOfHex("aAfF"), "\xAA\xFF");
    EXPECT_EQ(bytesOfHex(""), "");
}

TEST(HexDigits, RejectOddLengthsAndOtherCharacters)
{
    for (const char* text : { "0", "000", "0g", "g0", " 0", "0 ", "0x", "-1", "\xC3\xA4" })
        EXPECT_FALSE(bytesOfHex(text).has_value()) << text;
    EXPECT_FALSE(bytesOfHex(std::string_view("0\0", 2)).has_value());
}

TEST(MacAddressText, AcceptsHyphensAndColons)
{
    const MacAddress address { 0x00, 0x1A, 0x2B, 0x3C, 0x4D, 0xFE };
    EXPECT_EQ(macAddressOf("00-1A-2B-3C-4D-FE"), address);
    EXPECT_EQ(macAddressOf("00:1a:2b:3c:4d:fe"), address);
    for (const char* text : { "", "00", "001A2B3C4DFE", "00-1A-2B-3C-4D", "00-1A-2B-3C-4D-FE-", "00-1A-2B-3C-4D-FE-00",
             "00.1A.2B.3C.4D.FE", "00-1A-2B-3C-4D-F", "0-1A-2B-3C-4D-FE0", "00-1A-2B-3C-4D-FG" })
        EXPECT_FALSE(macAddressOf(text).has_value()) << text;
}

TEST(StationAddress, IsNeitherAGroupAddressNorZero)
{
    EXPECT_TRUE(isStationAddress({ 0x02, 0, 0, 0, 0, 0 }));
    EXPECT_TRUE(isStationAddress({ 0, 0, 0, 0, 0, 1 }));
    EXPECT_FALSE(isStationAddress({}));
    EXPECT_FALSE(isStationAddress({ 0x01, 0, 0, 0, 0, 1 }));
    EXPECT_FALSE(isStationAddress({ 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF }));
}

TEST(PrintableAscii, IsCharacters32To126)
{
    EXPECT_TRUE(isPrintableAscii(" ~"));
    EXPECT_TRUE(isPrintableAscii(""));
    for (const char* text : { "\x1F", "\x7F", "\x80", "\xFF", "a\n" })
        EXPECT_FALSE(isPrintableAscii(text));
    EXPECT_FALSE(isPrintableAscii(std::string_view("a\0", 2)));
}

TEST(Channels, AreThoseOfTheTable)
{
    EXPECT_TRUE(isChannel(1));
    EXPECT_TRUE(isChannel(14));
    EXPECT_TRUE(isChannel(161));
    for (const std::int64_t number :
        { std::int64_t(0), std::int64_t(-1), std::int64_t(15), std::int64_t(165), (std::int64_t(1) << 32) + 1 })
        EXPECT_FALSE(isChannel(number)) << number;
}

} // namespace
