#include "services/linux/wire/NetlinkAttributes.h"

#include "tests/services/linux/wire/AttributeBuilder.h"

#include <gtest/gtest.h>

TEST(NetlinkAttributes, AreReadInOrderWithTheirPadding)
{
    const Bytes bytes = AttributeBuilder().number(1, std::uint8_t { 7 }).text(2, "wlan0").flag(3).bytes();
    std::vector<std::pair<int, std::size_t>> seen;
    forEachAttribute(bytes, [&seen](std::uint16_t type, auto payload) { seen.emplace_back(type, payload.size()); });
    EXPECT_EQ(seen, (std::vector<std::pair<int, std::size_t>> { { 1, 1 }, { 2, 6 }, { 3, 0 } }));
    EXPECT_EQ(textIn(*findAttribute(bytes, 2)), "wlan0");
    EXPECT_EQ(numberIn<std::uint8_t>(*findAttribute(bytes, 1)), 7);
    EXPECT_FALSE(findAttribute(bytes, 4));
}

TEST(NetlinkAttributes, LastOneMayLackItsPadding)
{
    Bytes bytes = AttributeBuilder().number(1, std::uint8_t { 7 }).bytes();
    bytes.resize(5);
    EXPECT_EQ(numberIn<std::uint8_t>(*findAttribute(bytes, 1)), 7);
}

TEST(NetlinkAttributes, FlagBitsAreNoPartOfTheType)
{
    const Bytes bytes = AttributeBuilder().flag(0x8000 | 5).bytes();
    EXPECT_TRUE(findAttribute(bytes, 5));
}

TEST(NetlinkAttributes, EndAtAMalformedOne)
{
    const Bytes whole = AttributeBuilder().number(1, std::uint32_t { 7 }).number(2, std::uint32_t { 8 }).bytes();
    for (const std::uint8_t length : std::initializer_list<std::uint8_t> { 0, 3, 9, 255 }) {
        Bytes bytes = whole;
        bytes[8] = std::byte { length }; // of the second attribute
        EXPECT_TRUE(findAttribute(bytes, 1)) << int(length);
        EXPECT_FALSE(findAttribute(bytes, 2)) << int(length);
    }
    EXPECT_FALSE(findAttribute(std::span(whole).first(3), 1));
}

TEST(NetlinkAttributes, NumbersNeedTheirExactSize)
{
    EXPECT_FALSE(numberIn<std::uint32_t>(Bytes(3)));
    EXPECT_FALSE(numberIn<std::uint32_t>(Bytes(5)));
    EXPECT_EQ(numberIn<std::int32_t>(bytesOf(std::int32_t { -5 })), -5);
}
