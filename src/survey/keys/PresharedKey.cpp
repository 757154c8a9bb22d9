#include "survey/keys/PresharedKey.h"

#include "crypto/HexDigits.h"
#include "crypto/PasswordHash.h"

#include <algorithm>

PresharedKey derivePsk(const SecretText& passphrase, const NetworkName& name, const PresharedKey& fallback)
{
    constexpr std::size_t derivedSize = 40; // PasswordHash writes two whole SHA-1 digests
    SecretArray<std::uint8_t, derivedSize> derived {};
    std::copy(fallback.begin(), fallback.end(), derived.begin());
    // The result does not tell whether the passphrase was refused; the output is unchanged if it was.
    (void)PasswordHash(passphrase.c_str(), reinterpret_cast<const unsigned char*>(name.bytes().constData()),
        static_cast<std::int32_t>(name.bytes().size()), derived.data());

    PresharedKey key {};
    std::copy_n(derived.begin(), key.size(), key.begin());
    return key;
}

PresharedKey pskFromDigits(const SecretText& digits)
{
    PresharedKey key {};
    AtoH(digits.view(), key.data(), static_cast<std::int32_t>(key.size()));
    return key;
}

PresharedKey pskFromBytes(const SecretText& text)
{
    PresharedKey key {};
    text.view().copy(reinterpret_cast<char*>(key.data()), key.size());
    return key;
}
