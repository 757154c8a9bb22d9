#include "crypto/PasswordHash.h"

#include "EngineTest.h"
#include "crypto/HmacSha1.h"
#include "tests/support/StandardErrorOf.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::size_t keySize = 32;
constexpr unsigned char untouched = 0xA5;
constexpr const char* errorLine = "Password error!!\n";

// The 40 bytes that PasswordHash writes and a margin to detect overruns.
struct Output {
    Output() { bytes.fill(untouched); }

    [[nodiscard]] bool isUntouched() const
    {
        return std::all_of(bytes.begin(), bytes.end(), [](unsigned char byte) { return byte == untouched; });
    }

    [[nodiscard]] bool marginIsUntouched() const
    {
        return std::all_of(bytes.begin() + 40, bytes.end(), [](unsigned char byte) { return byte == untouched; });
    }

    [[nodiscard]] std::string key() const { return hexOf(std::span(bytes).first(keySize)); }
    [[nodiscard]] std::string rest() const { return hexOf(std::span(bytes).subspan(keySize, 8)); }

    std::array<unsigned char, 48> bytes;
};

int hash(const std::string& passphrase, const std::string& ssid, Output& output)
{
    return PasswordHash(passphrase.c_str(), bytesOf(ssid), lengthOf(ssid), output.bytes.data());
}

class PasswordHashTest : public EngineTest { };
INSTANTIATE_TEST_SUITE_P(Engines, PasswordHashTest, testing::ValuesIn(availableEngines()), engineName);

// The three test vectors of IEEE 802.11i, annex H.4.

TEST_P(PasswordHashTest, MatchesTheFirstVectorOfTheStandard)
{
    Output output;
    EXPECT_EQ(hash("password", "IEEE", output), 1);
    EXPECT_EQ(output.key(), "f42c6fc52df0ebef9ebb4b90b38a5f902e83fe1b135a70e23aed762e9710a12e");
    EXPECT_EQ(output.rest(), "4888f197a3680415"); // the rest of block 2
    EXPECT_TRUE(output.marginIsUntouched());
}

TEST_P(PasswordHashTest, MatchesTheSecondVectorOfTheStandard)
{
    Output output;
    EXPECT_EQ(hash("ThisIsAPassword", "ThisIsASSID", output), 1);
    EXPECT_EQ(output.key(), "0dc0d6eb90555ed6419756b9a15ec3e3209b63df707dd508d14581f8982721af");
}

TEST_P(PasswordHashTest, MatchesTheThirdVectorOfTheStandard)
{
    Output output;
    EXPECT_EQ(hash(std::string(32, 'a'), std::string(32, 'Z'), output), 1);
    EXPECT_EQ(output.key(), "becb93866bb8c3832cb777c2f559807c8c59afcb6eae734885001300a981cc62");
}

TEST_P(PasswordHashTest, ConcatenatesTheFirstTwoBlocksOfF)
{
    Output together;
    hash("a passphrase", "network", together);
    Output blocks;
    F("a passphrase", bytesOf("network"), 7, 4096, 1, blocks.bytes.data());
    F("a passphrase", bytesOf("network"), 7, 4096, 2, blocks.bytes.data() + 20);
    EXPECT_EQ(together.bytes, blocks.bytes);
}

TEST(PasswordHash, RejectsAPassphraseOf64Bytes)
{
    Output output;
    EXPECT_EQ(hash(std::string(64, 'p'), "ssid", output), 0);
    EXPECT_TRUE(output.isUntouched());
}

TEST(PasswordHash, AcceptsAPassphraseOf63Bytes)
{
    Output output;
    EXPECT_EQ(hash(std::string(63, 'p'), "ssid", output), 1);
    EXPECT_FALSE(output.isUntouched());
}

TEST(PasswordHash, AcceptsAnSsidOf32BytesAndRejectsOneOf33)
{
    Output accepted;
    EXPECT_EQ(hash("password", std::string(32, 's'), accepted), 1);
    EXPECT_FALSE(accepted.isUntouched());
    Output refused;
    EXPECT_EQ(hash("password", std::string(33, 's'), refused), 0);
    EXPECT_TRUE(refused.isUntouched());
}

TEST(PasswordHash, AcceptsAnEmptySsid)
{
    Output output;
    EXPECT_EQ(PasswordHash("password", nullptr, 0, output.bytes.data()), 1);
    Output block;
    F("password", nullptr, 0, 4096, 1, block.bytes.data());
    EXPECT_FALSE(block.isUntouched());
    EXPECT_TRUE(std::equal(block.bytes.begin(), block.bytes.begin() + 20, output.bytes.begin()));
}

TEST(PasswordHash, TreatsANegativeSsidLengthAsEmpty)
{
    Output empty;
    EXPECT_EQ(PasswordHash("password", nullptr, 0, empty.bytes.data()), 1);
    Output negative;
    EXPECT_EQ(PasswordHash("password", nullptr, -1, negative.bytes.data()), 1);
    EXPECT_EQ(negative.bytes, empty.bytes);
}

TEST(PasswordHash, PrintsAnErrorForEachBlockButSucceedsForAnInvalidByte)
{
    for (const char* passphrase : { "pass\tword", "passw\xE9rd", "\x80password", "password\x1F" }) {
        Output output;
        EXPECT_EQ(standardErrorOf([&] { EXPECT_EQ(hash(passphrase, "ssid", output), 1); }),
            std::string(errorLine) + errorLine);
        EXPECT_TRUE(output.isUntouched());
    }
}

TEST(PasswordHash, ChecksTheLengthBeforeTheCharacters)
{
    Output output;
    EXPECT_EQ(standardErrorOf([&] { EXPECT_EQ(hash(std::string(64, '\t'), "ssid", output), 0); }), "");
}

TEST(PasswordHash, AcceptsDeleteAndSpace)
{
    for (const char* passphrase : { "pass\x7Fword", "pass word" }) {
        Output output;
        EXPECT_EQ(standardErrorOf([&] { EXPECT_EQ(hash(passphrase, "ssid", output), 1); }), "");
        EXPECT_FALSE(output.isUntouched());
    }
}

TEST(F, PrintsOneErrorAndWritesNothingForAnInvalidByte)
{
    Output output;
    const auto tab = [&] { F("pass\tword", bytesOf("ssid"), 4, 4096, 1, output.bytes.data()); };
    EXPECT_EQ(standardErrorOf(tab), errorLine);
    EXPECT_TRUE(output.isUntouched());
}

// PBKDF2 written out as in its definition. hmac_sha1 may overwrite the key, so each call gets a fresh copy.
std::string definitionOfF(
    const std::string& passphrase, const std::string& ssid, std::int32_t iterations, char blockIndex)
{
    std::string salt = ssid + std::string(3, '\0') + blockIndex;
    std::array<unsigned char, 20> previous;
    std::array<unsigned char, 20> sum;
    std::string key = passphrase;
    hmac_sha1(bytesOf(salt), lengthOf(salt), bytesOf(key), lengthOf(key), previous.data());
    sum = previous;
    for (std::int32_t i = 1; i < iterations; ++i) {
        key = passphrase;
        hmac_sha1(previous.data(), 20, bytesOf(key), lengthOf(key), previous.data());
        for (std::size_t byte = 0; byte < sum.size(); ++byte)
            sum[byte] ^= previous[byte];
    }
    return hexOf(sum);
}

TEST_P(PasswordHashTest, FMatchesItsDefinition)
{
    for (const std::size_t passphraseLength : { 0U, 1U, 63U, 64U, 65U, 100U })
        for (const std::size_t ssidLength : { 0U, 1U, 31U, 32U })
            for (const std::int32_t iterations : { 0, 1, 2, 7 }) {
                const std::string passphrase(passphraseLength, 'k');
                const std::string ssid(ssidLength, '\xF0');
                Output output;
                F(passphrase.c_str(), bytesOf(ssid), lengthOf(ssid), iterations, 3, output.bytes.data());
                EXPECT_EQ(hexOf(std::span(output.bytes).first(20)), definitionOfF(passphrase, ssid, iterations, 3))
                    << passphraseLength << ' ' << ssidLength << ' ' << iterations;
                EXPECT_EQ(output.bytes[20], untouched);
            }
}

TEST(F, ClampsTheSsidTo32Bytes)
{
    const std::string ssid(40, 's');
    Output output;
    F("password", bytesOf(ssid), 40, 2, 1, output.bytes.data());
    EXPECT_EQ(hexOf(std::span(output.bytes).first(20)), definitionOfF("password", std::string(32, 's'), 2, 1));
}

std::size_t compressions = 0;

std::size_t compressionsOf(void (*work)())
{
    static constexpr Sha1Engine counting { "counting", [](std::span<Sha1Lane> lanes) {
                                              compressions += lanes.size();
                                              portableSha1Engine().compress(lanes);
                                          } };
    const ForcedSha1Engine forced(counting);
    compressions = 0;
    work();
    return compressions;
}

// Two blocks of 4096 HMACs with two compressions each; the two pads are compressed only once.
TEST(PasswordHash, NeedsTheMinimumNumberOfCompressions)
{
    EXPECT_EQ(compressionsOf([] {
        Output output;
        (void)hash("password", "IEEE", output);
    }),
        2U * 4096 * 2 + 2);
    EXPECT_EQ(compressionsOf([] {
        Output output;
        (void)hash(std::string(63, 'p'), std::string(32, 's'), output);
    }),
        2U * 4096 * 2 + 2);
}

TEST(F, NeedsTheMinimumNumberOfCompressions)
{
    EXPECT_EQ(compressionsOf([] {
        Output output;
        F("password", bytesOf("IEEE"), 4, 4096, 1, output.bytes.data());
    }),
        4096U * 2 + 2);
}

} // namespace
