#include "services/card/CardSettings.h"

#include "services/card/RecordBytes.h"

#include <algorithm>

namespace {

constexpr MacAddress broadcastAddress { 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF };

struct KeyRecord {
    NDIS_802_11_KEY head {};
    WepKeyBytes material;
};

std::optional<KeyRecord> keyRecord(std::span<const std::byte> record)
{
    const auto head = recordAt<NDIS_802_11_KEY>(record);
    if (!head || head->Length != record.size() || head->KeyLength > record.size()
        || head->KeyLength + keyRecordOverhead != record.size())
        return std::nullopt;
    KeyRecord key { *head, {} };
    for (const std::byte octet : record.subspan(sizeof(NDIS_802_11_KEY), head->KeyLength))
        key.material.push_back(std::to_integer<std::uint8_t>(octet));
    return key;
}

std::optional<PresharedKey> presharedKey(const KeyRecord& key)
{
    PresharedKey material {};
    if (key.material.size() != material.size() || key.head.KeyIndex != keyIndexTransmit)
        return std::nullopt;
    std::copy(key.material.begin(), key.material.end(), material.begin());
    return material;
}

bool addWepKey(CardSettings& settings, const KeyRecord& key)
{
    const std::size_t index = key.head.KeyIndex & ~keyIndexTransmit;
    const std::size_t length = key.material.size();
    if (index >= settings.wepKeys.size() || key.head.BSSID != broadcastAddress
        || (length != wep40KeyBytes && length != wep104KeyBytes))
        return false;
    settings.wepKeys[index] = key.material;
    if ((key.head.KeyIndex & keyIndexTransmit) != 0)
        settings.transmitKeyIndex = index;
    return true;
}

} // namespace

bool addKey(CardSettings& settings, std::span<const std::byte> record)
{
    const auto key = keyRecord(record);
    if (!key)
        return false;
    const auto shared = presharedKey(*key);
    if (!shared)
        return addWepKey(settings, *key);
    settings.adHocWpaKey = shared;
    return true;
}

bool addWpaKey(CardSettings& settings, std::span<const std::byte> record)
{
    const auto key = keyRecord(record);
    const auto shared = key ? presharedKey(*key) : std::nullopt;
    if (!shared)
        return false;
    settings.wpaKey = shared;
    return true;
}

bool removeKey(CardSettings& settings, std::span<const std::byte> record)
{
    const auto remove = recordOf<NDIS_802_11_REMOVE_KEY>(record);
    if (!remove || remove->Length != sizeof(NDIS_802_11_REMOVE_KEY) || remove->KeyIndex >= settings.wepKeys.size()
        || remove->BSSID != broadcastAddress)
        return false;
    settings.wepKeys[remove->KeyIndex].clear();
    if (settings.transmitKeyIndex == remove->KeyIndex)
        settings.transmitKeyIndex.reset();
    return true;
}
