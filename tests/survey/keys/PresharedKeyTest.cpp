#include "survey/keys/PresharedKey.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace {

std::string bytesOf(const PresharedKey& key)
{
    return { key.begin(), key.end() };
}

PresharedKey filled(std::uint8_t byte)
{
    PresharedKey key {};
    key.fill(byte);
    return key;
}

TEST(DerivePsk, MatchesTheTestVectorOfIeee80211i)
{
    const PresharedKey expected { 0xF4, 0x2C, 0x6F, 0xC5, 0x2D, 0xF0, 0xEB, 0xEF, 0x9E, 0xBB, 0x4B, 0x90, 0xB3, 0x8A,
        0x5F, 0x90, 0x2E, 0x83, 0xFE, 0x1B, 0x13, 0x5A, 0x70, 0xE2, 0x3A, 0xED, 0x76, 0x2E, 0x97, 0x10, 0xA1, 0x2E };
    EXPECT_EQ(derivePsk("password", NetworkName("IEEE")), expected);
    EXPECT_EQ(derivePsk("password", NetworkName("IEEE"), filled(7)), expected);
}

TEST(DerivePsk, ReturnsTheFallbackIfPassphraseOrNameIsRefused)
{
    const PresharedKey fallback = filled(7);
    EXPECT_EQ(derivePsk("tab\tinside", NetworkName("IEEE"), fallback), fallback);
    EXPECT_EQ(derivePsk(std::string(64, 'a'), NetworkName("IEEE"), fallback), fallback);
    EXPECT_EQ(derivePsk("password", NetworkName(QByteArray(33, 'a')), fallback), fallback);
    EXPECT_EQ(derivePsk("tab\tinside", NetworkName("IEEE")), filled(0));
}

TEST(PskFromDigits, ConvertsDigitsAndPadsWithZeros)
{
    EXPECT_EQ(bytesOf(pskFromDigits(std::string(64, 'a'))), std::string(32, '\xAA'));
    EXPECT_EQ(bytesOf(pskFromDigits("0fF0")), "\x0F\xF0" + std::string(30, '\0'));
}

TEST(PskFromBytes, TakesTheFirst32BytesAndPadsWithZeros)
{
    EXPECT_EQ(bytesOf(pskFromBytes(std::string(32, 'a') + "b")), std::string(32, 'a'));
    EXPECT_EQ(bytesOf(pskFromBytes("ab")), "ab" + std::string(30, '\0'));
}

} // namespace
