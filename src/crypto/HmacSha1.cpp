#include "crypto/HmacSha1.h"

#include "crypto/Sha1.h"

namespace {

constexpr std::int32_t blockLength = sha1BlockSize;
constexpr std::int32_t digestLength = sha1DigestSize;

void appendPad(Sha1Context& context, const unsigned char* key, std::int32_t keyLength, std::uint8_t mask)
{
    std::array<unsigned char, sha1BlockSize> pad;
    pad.fill(mask);
    for (std::int32_t i = 0; i < keyLength; ++i)
        pad[static_cast<std::size_t>(i)] ^= key[i];
    A_SHAUpdate(context, pad.data(), blockLength);
}

} // namespace

void hmac_sha1(const unsigned char* text, std::int32_t textLength, unsigned char* key, std::int32_t keyLength,
    unsigned char* digest)
{
    Sha1Context context;
    A_SHAInit(context);
    if (keyLength > blockLength) {
        A_SHAUpdate(context, key, keyLength);
        A_SHAFinal(context, key);
        keyLength = digestLength;
    }
    appendPad(context, key, keyLength, 0x36);
    A_SHAUpdate(context, text, textLength);
    A_SHAFinal(context, digest); // also re-initialises the context for the outer hash

    appendPad(context, key, keyLength, 0x5C);
    A_SHAUpdate(context, digest, digestLength);
    A_SHAFinal(context, digest);
}
