#include "services/host/TransportPackets.h"

#include "tests/services/host/TestClient.h"

#include <gtest/gtest.h>

namespace {

TEST(ParseRequest, ReadsEveryField)
{
    const Bytes packet = bytesOf({
        1, 0, 0, 0, // structure call
        0x17, 0x02, 0x01, 0x0D, // selector
        3, 0, 0, 0, // input size
        0x00, 0x10, 0, 0, // reply capacity 4096
        0xAA, 0xBB, 0xCC, // input
    });
    const auto request = parseRequest(packet);
    ASSERT_TRUE(request.has_value());
    EXPECT_EQ(request->kind, RequestKind::StructureCall);
    EXPECT_EQ(request->selector, 0x0D010217u);
    EXPECT_EQ(request->replyCapacity, 4096u);
    EXPECT_EQ(request->input, bytesOf({ 0xAA, 0xBB, 0xCC }));
}

TEST(ParseRequest, ReadsTheSelectorOfOpenAndScalarCalls)
{
    const auto open = parseRequest(requestPacket(0, 7, 0, 0));
    ASSERT_TRUE(open.has_value());
    EXPECT_EQ(open->kind, RequestKind::Open);
    EXPECT_EQ(open->selector, 7u);
    const auto scalar = parseRequest(requestPacket(2, 1, 0, 0));
    ASSERT_TRUE(scalar.has_value());
    EXPECT_EQ(scalar->kind, RequestKind::ScalarCall);
    EXPECT_EQ(scalar->selector, 1u);
}

TEST(ParseRequest, RejectsAShortHeader)
{
    const Bytes whole = openPacket();
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_FALSE(parseRequest(std::span(whole).first(size)).has_value()) << size;
    EXPECT_TRUE(parseRequest(whole).has_value());
}

TEST(ParseRequest, RejectsUnknownKinds)
{
    EXPECT_FALSE(parseRequest(requestPacket(3, 0, 0, 0)).has_value());
    EXPECT_FALSE(parseRequest(requestPacket(0xFFFFFFFF, 0, 0, 0)).has_value());
}

TEST(ParseRequest, RejectsAnInputSizeThatDisagreesWithThePacket)
{
    EXPECT_FALSE(parseRequest(requestPacket(1, 0, 4, 0, Bytes(3))).has_value());
    EXPECT_FALSE(parseRequest(requestPacket(1, 0, 4, 0, Bytes(5))).has_value());
    EXPECT_FALSE(parseRequest(requestPacket(1, 0, 0xFFFFFFFF, 0, Bytes(5))).has_value());
    EXPECT_TRUE(parseRequest(requestPacket(1, 0, 4, 0, Bytes(4))).has_value());
}

TEST(ParseRequest, LimitsInputAndCapacityTo65536Bytes)
{
    EXPECT_TRUE(parseRequest(requestPacket(1, 0, 65'536, 65'536, Bytes(65'536))).has_value());
    EXPECT_FALSE(parseRequest(requestPacket(1, 0, 65'537, 0, Bytes(65'537))).has_value());
    EXPECT_FALSE(parseRequest(requestPacket(1, 0, 0, 65'537)).has_value());
}

TEST(ParseRequest, RejectsInputAndCapacityOfOpenAndScalarCalls)
{
    for (const std::uint32_t kind : { 0u, 2u }) {
        EXPECT_FALSE(parseRequest(requestPacket(kind, 0, 0, 4)).has_value()) << kind;
        EXPECT_FALSE(parseRequest(requestPacket(kind, 0, 4, 0, Bytes(4))).has_value()) << kind;
    }
}

TEST(MakeReply, ConcatenatesResultSizeAndOutput)
{
    EXPECT_EQ(makeReply(0, bytesOf({ 0xAA, 0xBB }), 4), bytesOf({ 0, 0, 0, 0, 2, 0, 0, 0, 0xAA, 0xBB }));
}

TEST(MakeReply, TruncatesOutputToTheCapacity)
{
    EXPECT_EQ(makeReply(0, bytesOf({ 1, 2, 3 }), 2), bytesOf({ 0, 0, 0, 0, 2, 0, 0, 0, 1, 2 }));
    EXPECT_EQ(makeReply(0, bytesOf({ 1, 2, 3 }), 0), bytesOf({ 0, 0, 0, 0, 0, 0, 0, 0 }));
}

TEST(MakeReply, DropsTheOutputOfAFailure)
{
    EXPECT_EQ(makeReply(5, bytesOf({ 1, 2, 3 }), 3), bytesOf({ 5, 0, 0, 0, 0, 0, 0, 0 }));
}

TEST(IsSuccessReply, NeedsACompleteHeaderWithResultZero)
{
    EXPECT_TRUE(isSuccessReply(bytesOf({ 0, 0, 0, 0, 0, 0, 0, 0 })));
    EXPECT_FALSE(isSuccessReply(bytesOf({ 1, 0, 0, 0, 0, 0, 0, 0 })));
    EXPECT_FALSE(isSuccessReply(bytesOf({ 0, 0, 0, 0, 0, 0, 0 })));
    EXPECT_FALSE(isSuccessReply({}));
}

} // namespace
