#pragma once

#include "services/card/CardSettings.h"
#include "services/card/ListDelivery.h"
#include "services/linux/card/CardCounters.h"
#include "services/linux/card/NetworkList.h"
#include "services/linux/card/ScanPlan.h"
#include "services/linux/wire/SupplicantText.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// What does not change while the interface exists.
struct CardHardware {
    MacAddress address {}; // the permanent one
    std::uint8_t firmwareMajor { 0 };
    std::uint8_t firmwareMinor { 0 };
};

// The network that the client asked for.
struct JoinRequest {
    Octets ssid; // empty with an address: its name is not known yet
    std::optional<MacAddress> bssid;
};

struct LinkFacts {
    MacAddress bssid {};
    Octets ssid;
    std::uint32_t frequencyMhz { 0 };
    bool isAdHoc { false };
    std::vector<StationInfo> peers;
    std::optional<std::int32_t> noiseDbm;
};

// The complete state of the card: what the client has set, and what the kernel and the supplicant have said last. Times
// are milliseconds of a monotonic clock.
struct CardState {
    CardHardware hardware;
    WiphyFacts wiphy;
    CardSettings settings;
    bool isUnsupportedAuthentication { false }; // the last authentication mode was refused
    NetworkList networks;
    ScanPlan scanPlan;
    std::optional<std::int64_t> scanStartMs; // of the batch that the kernel scans
    ListDelivery delivery;
    std::optional<JoinRequest> request;
    Octets lastSsid; // requested again by the broadcast address; of an address, the name if it is known
    std::int64_t requestMs { 0 };
    bool isRequestWaiting { false }; // for the supplicant, which was not ready
    std::optional<LinkFacts> link; // while it carries data
    CardCounters counters;
    bool isSupplicantReady { false };
    bool wasSupplicantReady { false };
    bool isSoftBlocked { false };
    bool isHardBlocked { false };
    bool isEventRaised { false };
    std::int64_t notReadySinceMs { 0 };
    std::optional<std::int64_t> restoreAtMs; // the request is made again unless the client makes one

    [[nodiscard]] bool supportsFiveGhz() const;
    [[nodiscard]] bool isRadioOn() const { return !isSoftBlocked && !isHardBlocked; }
    void dropLink();
    // The channels that the regulatory domain, the wireless mode and the driver interface allow.
    [[nodiscard]] std::vector<ChannelFacts> allowedChannels() const;
    [[nodiscard]] std::vector<std::uint32_t> allowedMhz() const;
    // Whether the wireless mode and the regulatory domain allow a link there. An access point may have moved it to a
    // channel that the driver interface has no number for.
    [[nodiscard]] bool isAllowed(std::uint32_t frequencyMhz) const;
};
