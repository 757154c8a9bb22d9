#pragma once

#include "driver/records/NdisRecords.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <string_view>
#include <utility>
#include <vector>

// Builds valid and invalid scan results byte by byte.

using Bytes = std::vector<std::byte>;

inline Bytes bytesOf(std::initializer_list<int> values)
{
    Bytes bytes;
    for (const int value : values)
        bytes.push_back(static_cast<std::byte>(value));
    return bytes;
}

inline void append(Bytes& bytes, const Bytes& more)
{
    bytes.insert(bytes.end(), more.begin(), more.end());
}

// One entry. The default is an open infrastructure network on channel 1.
struct EntryBuilder {
    WLAN_BSSID_EX fixedPart {};
    Bytes elements;
    bool keepLengths { false }; // keep the lengths that the test has set

    explicit EntryBuilder(std::string_view ssid = "net", std::uint8_t lastAddressByte = 1)
    {
        fixedPart.MacAddress = { 0x00, 0x11, 0x22, 0x33, 0x44, lastAddressByte };
        fixedPart.Ssid.SsidLength = static_cast<std::uint32_t>(ssid.size());
        std::memcpy(fixedPart.Ssid.Ssid.data(), ssid.data(), ssid.size());
        fixedPart.Rssi = -65;
        fixedPart.Configuration.DSConfig = 2412000;
        fixedPart.InfrastructureMode = Ndis802_11Infrastructure;
    }

    [[nodiscard]] Bytes bytes() const
    {
        WLAN_BSSID_EX head = fixedPart;
        if (!keepLengths) {
            head.Length = static_cast<std::uint32_t>(sizeof(head) + elements.size());
            head.IELength = static_cast<std::uint32_t>(12 + elements.size());
        }
        Bytes result(sizeof(head));
        std::memcpy(result.data(), &head, sizeof(head));
        append(result, elements);
        return result;
    }
};

// Cipher suites of a WPA element
inline constexpr int tkip = 2;
inline constexpr int ccmp = 4;

// A WPA element with one or more pairwise suites of the group's cipher and one authentication suite.
inline Bytes wpaElement(int groupCipher, int authentication, int pairwiseSuites = 1)
{
    Bytes body = bytesOf({ 0x00, 0x50, 0xF2, 0x01, 0x01, 0x00, 0x00, 0x50, 0xF2, groupCipher, pairwiseSuites, 0x00 });
    for (int suite = 0; suite < pairwiseSuites; ++suite)
        append(body, bytesOf({ 0x00, 0x50, 0xF2, groupCipher }));
    append(body, bytesOf({ 0x01, 0x00, 0x00, 0x50, 0xF2, authentication }));
    Bytes element = bytesOf({ 221, static_cast<int>(body.size()) });
    append(element, body);
    return element;
}

inline EntryBuilder wpaEntry(
    int cipher, int authentication, std::int32_t mode = Ndis802_11Infrastructure, int pairwiseSuites = 1)
{
    EntryBuilder entry;
    entry.fixedPart.Privacy = 1;
    entry.fixedPart.InfrastructureMode = mode;
    entry.elements = wpaElement(cipher, authentication, pairwiseSuites);
    return entry;
}

// A list, or a chunk of one, with the given count.
inline Bytes bssidList(std::uint32_t count, const std::vector<Bytes>& entries)
{
    Bytes result(sizeof(count));
    std::memcpy(result.data(), &count, sizeof(count));
    for (const Bytes& entry : entries)
        append(result, entry);
    return result;
}

inline Bytes bssidList(const std::vector<EntryBuilder>& entries)
{
    std::vector<Bytes> all;
    for (const EntryBuilder& entry : entries)
        all.push_back(entry.bytes());
    return bssidList(static_cast<std::uint32_t>(entries.size()), all);
}

// The list at the start of a zero-filled buffer, as the utility stores it.
inline Bytes inBuffer(Bytes list, std::size_t size = 65536)
{
    list.resize(size);
    return list;
}
