#include "survey/keys/KeyRecords.h"

#include "crypto/PasswordHash.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace {

KeyRecord keyRecord(NDIS_802_11_KEY head, std::span<const std::uint8_t> key)
{
    head.KeyLength = static_cast<std::uint32_t>(key.size());
    head.Length = head.KeyLength + keyRecordOverhead;
    KeyRecord record(head.Length);
    std::memcpy(record.data(), &head, sizeof(head));
    if (!key.empty())
        std::memcpy(record.data() + sizeof(head), key.data(), key.size());
    return record;
}

} // namespace

KeyRecord wepKeyRecord(std::uint32_t keyIndex, bool transmitKey, std::span<const std::uint8_t> key)
{
    NDIS_802_11_KEY head {};
    head.KeyIndex = transmitKey ? keyIndex | keyIndexTransmit : keyIndex;
    head.BSSID.fill(0xFF);
    return keyRecord(head, key);
}

KeyRecord wpaKeyRecord(const PresharedKey& key)
{
    NDIS_802_11_KEY head {};
    head.KeyIndex = keyIndexTransmit;
    return keyRecord(head, key);
}

PresharedKey presharedKeyOfPassphrase(
    const std::string& passphrase, std::span<const std::uint8_t> ssid, std::uint32_t ssidLength)
{
    constexpr std::size_t derivedSize = 40; // the derivation writes two whole digests
    std::array<std::uint8_t, derivedSize> derived {};
    std::copy_n(passphrase.begin(), std::min(passphrase.size(), derived.size()), derived.begin());
    // A length beyond the name's bytes is refused by the derivation as soon as it exceeds 32; the bytes are its salt.
    const auto length
        = static_cast<std::int32_t>(std::min<std::uint32_t>(ssidLength, std::numeric_limits<std::int32_t>::max()));
    std::array<std::uint8_t, 32> salt {};
    std::copy_n(ssid.begin(), std::min(ssid.size(), salt.size()), salt.begin());
    (void)PasswordHash(passphrase.c_str(), salt.data(), length, derived.data());

    PresharedKey key {};
    std::copy_n(derived.begin(), key.size(), key.begin());
    return key;
}
