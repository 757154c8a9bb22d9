#include "crypto/HexDigits.h"
#include "crypto/HmacSha1.h"
#include "crypto/PasswordHash.h"
#include "crypto/Sha1Engine.h"
#include "tests/fuzz/Require.h"

#include <openssl/evp.h>
#include <openssl/hmac.h>

#include <array>
#include <cstring>
#include <string>
#include <vector>

// Compares crypto with OpenSSL. The first byte selects where the input is split: into HMAC key and text, and into
// passphrase and SSID. The second part is also converted as hexadecimal digits.

namespace {

using Digest = std::array<unsigned char, sha1DigestSize>;
using Bytes = std::vector<unsigned char>;

std::int32_t lengthOf(const Bytes& bytes)
{
    return static_cast<std::int32_t>(bytes.size());
}

void compareHmac(Bytes key, const Bytes& text)
{
    Digest theirs;
    const unsigned char emptyKey = 0; // OpenSSL treats a null key, the data of an empty vector, as a missing key
    require(HMAC(EVP_sha1(), key.empty() ? &emptyKey : key.data(), lengthOf(key), text.data(), text.size(),
                theirs.data(), nullptr)
        != nullptr);
    Digest ours;
    hmac_sha1(text.data(), lengthOf(text), key.data(), lengthOf(key), ours.data());
    require(ours == theirs);
}

bool isHashable(const std::string& passphrase)
{
    for (const char character : passphrase)
        if (character < 32 || static_cast<unsigned char>(character) > 127)
            return false;
    return true;
}

void compareDerivation(const Bytes& key, const Bytes& text)
{
    const std::string passphrase(key.begin(), key.end());
    if (!isHashable(passphrase) || text.size() > 32)
        return;
    constexpr int iterations = 3; // for speed; all later iterations are alike
    Digest theirs;
    require(PKCS5_PBKDF2_HMAC_SHA1(passphrase.c_str(), lengthOf(key), text.data(), lengthOf(text), iterations,
                static_cast<int>(theirs.size()), theirs.data())
        == 1);
    Digest ours;
    F(passphrase.c_str(), text.data(), lengthOf(text), iterations, 1, ours.data());
    require(ours == theirs);
}

// The digit value according to OpenSSL; 255 for invalid digits.
unsigned char digitValue(char character)
{
    const int value = OPENSSL_hexchar2int(static_cast<unsigned char>(character));
    return static_cast<unsigned char>(value < 0 ? 0xFF : value);
}

void compareHexDigits(const std::string& text, std::size_t size)
{
    Bytes ours(size, 0x77);
    AtoH(std::string_view(text), ours.data(), lengthOf(ours));
    for (std::size_t i = 0; i < size; ++i) {
        const unsigned high = 2 * i < text.size() ? digitValue(text[2 * i]) : 0;
        const unsigned low = 2 * i + 1 < text.size() ? digitValue(text[2 * i + 1]) : 0;
        require(ours[i] == ((high * 16 + low) & 0xFF));
    }
    if (text.size() >= 2 * size) {
        Bytes unbounded(size);
        AtoH(text.c_str(), unbounded.data(), lengthOf(unbounded));
        require(unbounded == ours);
    }
}

void compareAll(const Bytes& key, const Bytes& text)
{
    compareHmac(key, text);
    compareDerivation(key, text);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0 || size > 4096)
        return 0;
    const std::size_t divide = data[0] % size;
    const Bytes key(data + 1, data + 1 + divide);
    const Bytes text(data + 1 + divide, data + size);
    compareAll(key, text);
    {
        const ForcedSha1Engine forced(portableSha1Engine());
        compareAll(key, text);
    }
    compareHexDigits(std::string(text.begin(), text.end()), divide);
    return 0;
}
