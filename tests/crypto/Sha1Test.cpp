#include "crypto/Sha1.h"

#include "EngineTest.h"

#include <algorithm>

namespace {

std::string digestOf(const std::string& message)
{
    Sha1Context context;
    A_SHAInit(context);
    A_SHAUpdate(context, bytesOf(message), lengthOf(message));
    Digest digest;
    A_SHAFinal(context, digest.data());
    return hexOf(digest);
}

class Sha1 : public EngineTest { };
INSTANTIATE_TEST_SUITE_P(Engines, Sha1, testing::ValuesIn(availableEngines()), engineName);

constexpr const char* digestOfAbc = "a9993e364706816aba3e25717850c26c9cd0d89d";

TEST_P(Sha1, HashesAbcLikeTheStandard)
{
    EXPECT_EQ(digestOf("abc"), digestOfAbc);
}

TEST_P(Sha1, HashesThe448BitMessageLikeTheStandard)
{
    EXPECT_EQ(digestOf("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
        "84983e441c3bd26ebaae4aa1f95129e5e54670f1");
}

TEST_P(Sha1, HashesAMillionLettersLikeTheStandard)
{
    EXPECT_EQ(digestOf(std::string(1'000'000, 'a')), "34aa973cd4c4daa4f61eeb2bdbad27316534016f");
}

TEST_P(Sha1, HashesTheEmptyMessage)
{
    EXPECT_EQ(digestOf(""), "da39a3ee5e6b4b0d3255bfef95601890afd80709");
}

TEST_P(Sha1, AcceptsAMessageInPiecesAcrossBlocks)
{
    const std::string message(200, 'x');
    for (const std::int32_t piece : { 1, 3, 55, 56, 63, 64, 65 }) {
        Sha1Context context;
        A_SHAInit(context);
        for (std::int32_t position = 0; position < lengthOf(message); position += piece)
            A_SHAUpdate(context, bytesOf(message) + position, std::min(piece, lengthOf(message) - position));
        Digest digest;
        A_SHAFinal(context, digest.data());
        EXPECT_EQ(hexOf(digest), digestOf(message)) << "in pieces of " << piece;
    }
}

TEST_P(Sha1, IsReadyForAnotherMessageAfterTheDigest)
{
    Sha1Context context;
    A_SHAInit(context);
    Digest digest;
    A_SHAUpdate(context, bytesOf("something else"), 14);
    A_SHAFinal(context, digest.data());
    EXPECT_EQ(context.byteCount, 0);
    EXPECT_EQ(context.bitLengthLow, 0U);
    A_SHAUpdate(context, bytesOf("abc"), 3);
    A_SHAFinal(context, digest.data());
    EXPECT_EQ(hexOf(digest), digestOfAbc);
}

TEST_P(Sha1, AppendsNothingForALengthOfZeroOrLess)
{
    Sha1Context context;
    A_SHAInit(context);
    A_SHAUpdate(context, nullptr, 0);
    A_SHAUpdate(context, nullptr, -1);
    EXPECT_EQ(context.byteCount, 0);
    EXPECT_EQ(context.bitLengthLow, 0U);
}

TEST_P(Sha1, CompressesTheBlockHeldInTheContext)
{
    Sha1Context context;
    A_SHAInit(context);
    context.lane.words[0] = 0x61626380; // "abc" and the first padding bit
    context.lane.words[15] = 24;
    shaHashBlock(context);
    EXPECT_EQ(context.lane.chain, (Sha1Chain { 0xA9993E36, 0x4706816A, 0xBA3E2571, 0x7850C26C, 0x9CD0D89D }));
    EXPECT_EQ(context.lane.words[0], 0x61626380U);
    EXPECT_EQ(context.lane.words[15], 24U);
}

TEST(Sha1Context, ShiftsBytesIntoTheBlockMostSignificantFirst)
{
    Sha1Context context;
    A_SHAInit(context);
    const std::array<unsigned char, 5> bytes { 0x01, 0x02, 0x03, 0x04, 0x05 };
    A_SHAUpdate(context, bytes.data(), 5);
    EXPECT_EQ(context.lane.words[0], 0x01020304U);
    EXPECT_EQ(context.lane.words[1], 0x05U);
    EXPECT_EQ(context.byteCount, 5);
    EXPECT_EQ(context.bitLengthLow, 40U);
}

TEST(Sha1Context, CarriesTheBitLengthIntoItsHighHalf)
{
    Sha1Context context;
    A_SHAInit(context);
    context.bitLengthLow = 0xFFFFFFF8;
    A_SHAUpdate(context, bytesOf("a"), 1);
    EXPECT_EQ(context.bitLengthHigh, 1U);
    EXPECT_EQ(context.bitLengthLow, 0U);
}

TEST(Sha1Context, IsFullyClearedByInit)
{
    Sha1Context context;
    context.lane.words.fill(0xFFFFFFFF);
    A_SHAInit(context);
    EXPECT_EQ(context.lane.words, Sha1Words {});
    EXPECT_EQ(context.lane.chain, (Sha1Chain { 0x67452301, 0xEFCDAB89, 0x98BADCFE, 0x10325476, 0xC3D2E1F0 }));
}

TEST(Sha1Engine, CompressesLanesIndependently)
{
    Sha1Context start;
    A_SHAInit(start);
    for (const Sha1Engine* engine : availableEngines()) {
        std::array<Sha1Lane, 5> together;
        for (std::size_t i = 0; i < together.size(); ++i) {
            together[i] = start.lane;
            together[i].words[i] = static_cast<std::uint32_t>(0x01234567 * (i + 1));
        }
        auto single = together;
        engine->compress(together);
        for (std::size_t i = 0; i < single.size(); ++i) {
            portableSha1Engine().compress({ &single[i], 1 });
            EXPECT_EQ(together[i].chain, single[i].chain) << engine->name << ", lane " << i;
        }
    }
}

TEST(Sha1Engine, DefaultsToTheProcessorEngineIfAvailable)
{
    EXPECT_EQ(&sha1Engine(), availableEngines().back());
}

TEST(Sha1Engine, IsReplacedOnlyWhileForced)
{
    const Sha1Engine& usual = sha1Engine();
    const Sha1Engine other { "other", portableSha1Engine().compress };
    {
        const ForcedSha1Engine forced(other);
        EXPECT_EQ(&sha1Engine(), &other);
    }
    EXPECT_EQ(&sha1Engine(), &usual);
}

} // namespace
