#pragma once

#include "driver/records/NdisRecords.h"
#include "services/card/RecordBytes.h"

#include <algorithm>
#include <cstdint>
#include <string>

// Records as a client sends them.

// Copies a field of a packed record: test assertions bind references, which a misaligned field does not allow.
template <typename Value> [[nodiscard]] Value valueOf(Value value)
{
    return value;
}

[[nodiscard]] inline NDIS_802_11_SSID ssidRecord(const std::string& name)
{
    NDIS_802_11_SSID record {};
    record.SsidLength = static_cast<std::uint32_t>(name.size());
    std::copy(name.begin(), name.end(), record.Ssid.begin());
    return record;
}

[[nodiscard]] inline Bytes keyRecord(std::uint32_t index, const std::string& material, bool isWep = true)
{
    NDIS_802_11_KEY head {};
    head.Length = static_cast<std::uint32_t>(material.size()) + keyRecordOverhead;
    head.KeyIndex = index;
    head.KeyLength = static_cast<std::uint32_t>(material.size());
    if (isWep)
        head.BSSID = { 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF };
    Bytes bytes = bytesOf(head);
    for (const char character : material)
        bytes.push_back(static_cast<std::byte>(character));
    bytes.resize(head.Length);
    return bytes;
}

[[nodiscard]] inline NDIS_802_11_REMOVE_KEY removeKeyRecord(std::uint32_t index)
{
    return { sizeof(NDIS_802_11_REMOVE_KEY), index, { 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF }, {} };
}
