#pragma once

#include "driver/records/NdisRecords.h"
#include "services/card/RecordBytes.h"

#include <cstdint>
#include <vector>

// Capability bits of a beacon (IEEE 802.11)
inline constexpr std::uint16_t capabilityEss = 0x0001;
inline constexpr std::uint16_t capabilityIbss = 0x0002;
inline constexpr std::uint16_t capabilityPrivacy = 0x0010;
inline constexpr std::uint16_t capabilityShortPreamble = 0x0020;

// A scanned network, simulated or real.
struct BssDescription {
    MacAddress bssid {};
    std::vector<std::uint8_t> ssid; // at most 32 bytes are reported; empty for a hidden network
    std::int32_t rssiDbm { 0 };
    std::uint32_t networkType { Ndis802_11DS };
    std::uint32_t frequencyKhz { 0 }; // centre of the channel
    std::uint16_t beaconIntervalKusec { 100 };
    std::uint32_t atimWindowKusec { 0 };
    std::uint16_t capabilities { 0 }; // also says whether the network is ad hoc and requires encryption
    std::uint64_t timestampUs { 0 };
    std::vector<std::uint8_t> rates; // units of 500 kbit/s, bit 7 marks a basic rate; at most 16 are reported
    std::vector<std::uint8_t> elements; // information elements as received
};

// One entry of a scan result: a WLAN_BSSID_EX followed by the information elements.
[[nodiscard]] Bytes encodeBssidEntry(const BssDescription& bss);
