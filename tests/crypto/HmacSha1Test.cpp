#include "crypto/HmacSha1.h"

#include "EngineTest.h"

#include <array>

namespace {

std::string hmacOf(const std::string& text, std::string key)
{
    Digest digest;
    hmac_sha1(bytesOf(text), lengthOf(text), bytesOf(key), lengthOf(key), digest.data());
    return hexOf(digest);
}

class HmacSha1 : public EngineTest { };
INSTANTIATE_TEST_SUITE_P(Engines, HmacSha1, testing::ValuesIn(availableEngines()), engineName);

// The test cases of RFC 2202, section 3.

TEST_P(HmacSha1, MatchesTestCase1)
{
    EXPECT_EQ(hmacOf("Hi There", std::string(20, '\x0b')), "b617318655057264e28bc0b6fb378c8ef146be00");
}

TEST_P(HmacSha1, MatchesTestCase2)
{
    EXPECT_EQ(hmacOf("what do ya want for nothing?", "Jefe"), "effcdf6ae5eb2fa2d27416d5f184df9c259a7c79");
}

TEST_P(HmacSha1, MatchesTestCase3)
{
    EXPECT_EQ(hmacOf(std::string(50, '\xdd'), std::string(20, '\xaa')), "125d7342b9ac11cd91a39af48aa17b4f63f175d3");
}

TEST_P(HmacSha1, MatchesTestCase4)
{
    std::string key;
    for (char byte = 1; byte <= 25; ++byte)
        key.push_back(byte);
    EXPECT_EQ(hmacOf(std::string(50, '\xcd'), key), "4c9007f4026250c6bc8414f9bf50c86c2d7235da");
}

TEST_P(HmacSha1, MatchesTestCase5)
{
    EXPECT_EQ(hmacOf("Test With Truncation", std::string(20, '\x0c')), "4c1a03424b55e07fe7f27be1d58bb9324a9a5a04");
}

TEST_P(HmacSha1, MatchesTestCase6)
{
    EXPECT_EQ(hmacOf("Test Using Larger Than Block-Size Key - Hash Key First", std::string(80, '\xaa')),
        "aa4ae5e15272d00e95705637ce8a3b55ed402112");
}

TEST_P(HmacSha1, MatchesTestCase7)
{
    EXPECT_EQ(
        hmacOf("Test Using Larger Than Block-Size Key and Larger Than One Block-Size Data", std::string(80, '\xaa')),
        "e8e99d0f45237d786d6bbaa7965c7808bbff1a91");
}

TEST_P(HmacSha1, OverwritesAKeyOf65BytesWithItsDigest)
{
    std::array<unsigned char, 65> key;
    key.fill('a');
    Digest digest;
    hmac_sha1(bytesOf("text"), 4, key.data(), 65, digest.data());
    EXPECT_EQ(hexOf(std::span(key).first(20)), "11655326c708d70319be2610e8a57d9a5b959d3b");
    EXPECT_EQ(hexOf(std::span(key).last(45)), hexOf(std::vector<unsigned char>(45, 'a')));
    EXPECT_EQ(hexOf(digest), hmacOf("text", std::string(key.begin(), key.begin() + 20)));
}

TEST_P(HmacSha1, DoesNotChangeAKeyOf64Bytes)
{
    std::array<unsigned char, 64> key;
    key.fill('a');
    const auto before = key;
    Digest digest;
    hmac_sha1(bytesOf("text"), 4, key.data(), 64, digest.data());
    EXPECT_EQ(key, before);
}

TEST_P(HmacSha1, AcceptsTheTextBufferAsDigestBuffer)
{
    std::array<unsigned char, 20> textAndDigest;
    textAndDigest.fill('t');
    std::string key = "key";
    hmac_sha1(textAndDigest.data(), 20, bytesOf(key), 3, textAndDigest.data());
    EXPECT_EQ(hexOf(textAndDigest), hmacOf(std::string(20, 't'), "key"));
}

} // namespace
