#include "EngineTest.h"
#include "crypto/HmacSha1.h"
#include "crypto/PasswordHash.h"
#include "crypto/Sha1.h"

#include <openssl/evp.h>
#include <openssl/hmac.h>
#include <openssl/sha.h>

#include <array>
#include <random>

// Compares crypto with OpenSSL on random input from a fixed seed.

namespace {

class LibraryComparison : public EngineTest {
protected:
    std::size_t sizeUpTo(std::size_t limit) { return std::uniform_int_distribution<std::size_t>(0, limit)(m_random); }

    std::string bytes(std::size_t size) { return characters(size, 0, 255); }
    std::string passphrase(std::size_t size) { return characters(size, 32, 127); }

private:
    std::string characters(std::size_t size, int lowest, int highest)
    {
        std::uniform_int_distribution<int> distribution(lowest, highest);
        std::string text(size, '\0');
        for (char& character : text)
            character = static_cast<char>(distribution(m_random));
        return text;
    }

    std::mt19937 m_random { 20020801 };
};
INSTANTIATE_TEST_SUITE_P(Engines, LibraryComparison, testing::ValuesIn(availableEngines()), engineName);

TEST_P(LibraryComparison, Sha1)
{
    for (int round = 0; round < 500; ++round) {
        const std::string message = bytes(sizeUpTo(300));
        const auto split = static_cast<std::int32_t>(sizeUpTo(message.size()));
        Sha1Context context;
        A_SHAInit(context);
        A_SHAUpdate(context, bytesOf(message), split);
        A_SHAUpdate(context, bytesOf(message) + split, lengthOf(message) - split);
        Digest ours;
        A_SHAFinal(context, ours.data());
        Digest theirs;
        SHA1(bytesOf(message), message.size(), theirs.data());
        ASSERT_EQ(hexOf(ours), hexOf(theirs)) << "message " << hexOf({ bytesOf(message), message.size() });
    }
}

TEST_P(LibraryComparison, HmacSha1)
{
    for (int round = 0; round < 500; ++round) {
        const std::string text = bytes(sizeUpTo(200));
        std::string key = bytes(sizeUpTo(130));
        Digest theirs;
        ASSERT_NE(HMAC(EVP_sha1(), key.data(), static_cast<int>(key.size()), bytesOf(text), text.size(), theirs.data(),
                      nullptr),
            nullptr);
        Digest ours;
        hmac_sha1(bytesOf(text), lengthOf(text), bytesOf(key), lengthOf(key), ours.data());
        ASSERT_EQ(hexOf(ours), hexOf(theirs)) << "round " << round;
    }
}

TEST_P(LibraryComparison, PasswordHash)
{
    for (int round = 0; round < 24; ++round) {
        const std::string secret = passphrase(sizeUpTo(63));
        const std::string ssid = bytes(sizeUpTo(32));
        std::array<unsigned char, 40> theirs;
        ASSERT_EQ(PKCS5_PBKDF2_HMAC_SHA1(secret.data(), static_cast<int>(secret.size()), bytesOf(ssid),
                      static_cast<int>(ssid.size()), 4096, static_cast<int>(theirs.size()), theirs.data()),
            1);
        std::array<unsigned char, 40> ours;
        ASSERT_EQ(PasswordHash(secret.c_str(), bytesOf(ssid), lengthOf(ssid), ours.data()), 1);
        ASSERT_EQ(hexOf(ours), hexOf(theirs)) << "round " << round;
    }
}

TEST_P(LibraryComparison, FForAnyBlock)
{
    for (int round = 0; round < 300; ++round) {
        const std::string secret = passphrase(sizeUpTo(100));
        const std::string ssid = bytes(sizeUpTo(32));
        const auto iterations = static_cast<int>(1 + sizeUpTo(8));
        std::array<unsigned char, 300> theirs;
        ASSERT_EQ(PKCS5_PBKDF2_HMAC_SHA1(secret.data(), static_cast<int>(secret.size()), bytesOf(ssid),
                      static_cast<int>(ssid.size()), iterations, static_cast<int>(theirs.size()), theirs.data()),
            1);
        const std::size_t block = sizeUpTo(14);
        Digest ours;
        F(secret.c_str(), bytesOf(ssid), lengthOf(ssid), iterations, static_cast<std::int32_t>(block + 1), ours.data());
        ASSERT_EQ(hexOf(ours), hexOf(std::span(theirs).subspan(block * ours.size(), ours.size()))) << "round " << round;
    }
}

} // namespace
