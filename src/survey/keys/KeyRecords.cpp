#include "survey/keys/KeyRecords.h"

#include <cstring>

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
