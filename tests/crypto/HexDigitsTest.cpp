#include "crypto/HexDigits.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace {

using TwoBytes = std::array<unsigned char, 2>;

TEST(BtoH, ReturnsDigitValuesAnd255ForOtherCharacters)
{
    const std::string digits = "0123456789abcdef";
    const std::string capitals = "0123456789ABCDEF";
    for (int code = 0; code < 256; ++code) {
        const char character = static_cast<char>(code);
        std::size_t value = digits.find(character);
        if (value == std::string::npos)
            value = capitals.find(character);
        EXPECT_EQ(BtoH(character), value == std::string::npos ? 255 : value) << "character " << code;
    }
}

TEST(AtoH, AcceptsUpperAndLowerCase)
{
    TwoBytes bytes {};
    AtoH("0aFf", bytes.data(), 2);
    EXPECT_EQ(bytes, (TwoBytes { 0x0A, 0xFF }));
}

TEST(AtoH, ConvertsInvalidDigitsWithoutAnError)
{
    TwoBytes bytes { 0, 0x77 };
    AtoH("zz", bytes.data(), 1);
    EXPECT_EQ(bytes, (TwoBytes { 0xEF, 0x77 }));
    AtoH("g1", bytes.data(), 1);
    EXPECT_EQ(bytes[0], 0xF1);
    AtoH("1g", bytes.data(), 1);
    EXPECT_EQ(bytes[0], 0x0F);
}

TEST(AtoH, WritesNothingForAByteCountOfZero)
{
    TwoBytes bytes { 1, 2 };
    AtoH("ffff", bytes.data(), 0);
    AtoH(std::string_view("ffff"), bytes.data(), 0);
    EXPECT_EQ(bytes, (TwoBytes { 1, 2 }));
}

TEST(BoundedAtoH, MatchesTheUnboundedOverloadForALongEnoughText)
{
    TwoBytes bytes {};
    AtoH(std::string_view("0aFf99"), bytes.data(), 2);
    EXPECT_EQ(bytes, (TwoBytes { 0x0A, 0xFF }));
    AtoH(std::string_view("zz00"), bytes.data(), 2);
    EXPECT_EQ(bytes, (TwoBytes { 0xEF, 0x00 }));
}

TEST(BoundedAtoH, TreatsMissingDigitsAsZero)
{
    TwoBytes bytes { 0x77, 0x77 };
    AtoH(std::string_view("a"), bytes.data(), 2);
    EXPECT_EQ(bytes, (TwoBytes { 0xA0, 0x00 }));
    AtoH(std::string_view("abc"), bytes.data(), 2);
    EXPECT_EQ(bytes, (TwoBytes { 0xAB, 0xC0 }));
    AtoH(std::string_view(), bytes.data(), 2);
    EXPECT_EQ(bytes, (TwoBytes { 0x00, 0x00 }));
}

TEST(BoundedAtoH, DoesNotReadPastTheText)
{
    const std::string_view text = std::string_view("12345678").substr(0, 3);
    TwoBytes bytes {};
    AtoH(text, bytes.data(), 2);
    EXPECT_EQ(bytes, (TwoBytes { 0x12, 0x30 }));
}

} // namespace
