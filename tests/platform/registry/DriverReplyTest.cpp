#include "platform/registry/DriverReply.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstring>
#include <vector>

namespace {

std::vector<std::byte> packet(std::uint32_t result, std::uint32_t outputSize, std::size_t outputBytes)
{
    std::vector<std::byte> bytes(8 + outputBytes, std::byte { 0xA5 });
    std::memcpy(bytes.data(), &result, 4);
    std::memcpy(bytes.data() + 4, &outputSize, 4);
    return bytes;
}

TEST(DriverReply, ParsesGoldenPacket)
{
    static_assert(std::endian::native == std::endian::little, "the bytes below are little-endian");
    const std::vector<std::byte> golden {
        std::byte { 0 }, std::byte { 0 }, std::byte { 0 }, std::byte { 0 }, // result: success
        std::byte { 2 }, std::byte { 0 }, std::byte { 0 }, std::byte { 0 }, // output size
        std::byte { 0x12 }, std::byte { 0x34 }, // output
    };
    const DriverReply reply = parseDriverReply(golden, 2);
    EXPECT_EQ(reply.status, ReplyStatus::Success);
    ASSERT_EQ(reply.output.size(), 2u);
    EXPECT_EQ(reply.output.data(), golden.data() + 8);
}

TEST(DriverReply, AcceptsOutputUpToCapacity)
{
    EXPECT_EQ(parseDriverReply(packet(0, 65536, 65536), 65536).output.size(), 65536u);
    EXPECT_EQ(parseDriverReply(packet(0, 0, 0), 0).status, ReplyStatus::Success);
    EXPECT_EQ(parseDriverReply(packet(0, 5, 5), 4).status, ReplyStatus::Malformed);
}

TEST(DriverReply, IsMalformedWhenSizesDisagree)
{
    EXPECT_EQ(parseDriverReply(packet(0, 4, 3), 100).status, ReplyStatus::Malformed);
    EXPECT_EQ(parseDriverReply(packet(0, 4, 5), 100).status, ReplyStatus::Malformed);
    EXPECT_EQ(parseDriverReply(packet(0, 0xFFFFFFFF, 5), 100).status, ReplyStatus::Malformed);
    EXPECT_EQ(parseDriverReply(packet(1, 4, 0), 100).status, ReplyStatus::Malformed);
}

TEST(DriverReply, IsMalformedWhenHeaderIsTruncated)
{
    const auto whole = packet(0, 0, 0);
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_EQ(parseDriverReply(std::span(whole).first(length), 100).status, ReplyStatus::Malformed) << length;
}

TEST(DriverReply, HasNoOutputOnFailure)
{
    for (const std::uint32_t result : { 1U, 0x80000000U, 0xFFFFFFFFU }) {
        const auto bytes = packet(result, 3, 3);
        const DriverReply reply = parseDriverReply(bytes, 100);
        EXPECT_EQ(reply.status, ReplyStatus::Failure);
        EXPECT_TRUE(reply.output.empty());
    }
}

} // namespace
