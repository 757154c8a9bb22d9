#pragma once

#include "driver/records/NdisRecords.h"
#include "services/linux/wire/InformationElements.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

// What the kernel says about a wireless device, read from the attributes of nl80211 messages (without the headers).
// Every reader accepts any bytes; missing and malformed attributes keep the default.

using Attributes = std::span<const std::byte>;

// One network of the kernel's scan result.
struct ScanEntry {
    MacAddress bssid {};
    std::uint32_t frequencyMhz { 0 };
    std::uint16_t beaconIntervalKusec { 0 };
    std::uint16_t capabilities { 0 };
    std::uint64_t timestampUs { 0 };
    std::optional<std::int32_t> signalDbm; // absent for an ad hoc cell of our own
    std::uint32_t ageMs { 0 }; // since the last beacon or probe response
    bool isAssociated { false }; // or joined, for an ad hoc network
    Octets elements;
};
// std::nullopt for an entry without address or frequency.
[[nodiscard]] std::optional<ScanEntry> scanEntry(Attributes attributes);

// The frame counters of the peer restart with each association.
struct StationInfo {
    MacAddress address {};
    std::optional<std::int32_t> signalDbm;
    std::uint32_t transmitBitrate { 0 }; // units of 100 kbit/s
    std::uint32_t transmittedFrames { 0 };
    std::uint32_t transmitRetries { 0 };
    std::uint32_t transmitFailures { 0 };
    std::uint32_t receivedFrames { 0 };
};
[[nodiscard]] std::optional<StationInfo> stationInfo(Attributes attributes);

struct ChannelFacts {
    std::uint32_t frequencyMhz { 0 };
    std::int32_t maxPowerMbm { 0 };
    bool isDisabled { false }; // by the regulatory domain
    bool isPassive { false }; // no transmission before a beacon was heard; includes radar channels

    bool operator==(const ChannelFacts&) const = default;
};

struct WiphyFacts {
    std::vector<ChannelFacts> channels;
    std::vector<std::uint8_t> twoGhzRates; // units of 500 kbit/s
    std::vector<std::uint8_t> fiveGhzRates;
    // Whether the device has the rates of 802.11ac and 802.11ax in these bands.
    struct NewerRates {
        bool hasVht { false };
        bool hasHe { false };

        bool operator==(const NewerRates&) const = default;
    };
    NewerRates twoGhzNewer;
    NewerRates fiveGhzNewer;
    std::uint8_t maxScanSsids { 0 };

    bool operator==(const WiphyFacts&) const = default;
};
// The kernel splits the description of a device into many messages; each adds to the facts.
void addWiphy(WiphyFacts& facts, Attributes attributes);

struct InterfaceFacts {
    std::uint32_t index { 0 };
    std::uint32_t wiphy { 0 };
    std::uint32_t type { 0 }; // NL80211_IFTYPE_…
    std::string name;
};
// std::nullopt for a device without a network interface.
[[nodiscard]] std::optional<InterfaceFacts> interfaceFacts(Attributes attributes);

struct SurveyFacts {
    std::uint32_t frequencyMhz { 0 };
    std::optional<std::int32_t> noiseDbm;
    bool isInUse { false };
};
[[nodiscard]] std::optional<SurveyFacts> surveyFacts(Attributes attributes);

// The frequencies in MHz of a finished or aborted scan.
[[nodiscard]] std::vector<std::uint32_t> scannedFrequencies(Attributes attributes);

[[nodiscard]] std::optional<std::uint32_t> interfaceIndex(Attributes attributes);
[[nodiscard]] std::optional<std::uint32_t> wiphyIndex(Attributes attributes);
