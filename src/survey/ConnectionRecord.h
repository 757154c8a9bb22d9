#pragma once

#include "driver/BssidList.h"
#include "survey/NetworkSecurity.h"
#include "survey/connection/ProfileData.h"
#include "survey/keys/KeyRules.h"

#include <array>
#include <cstdint>
#include <memory>

// Converts a scanned network and the input from the sheets to connection settings.

// The result of the security sheet.
struct SecuritySettings {
    std::int32_t AuthenType { 0 }; // index: 0 "Open", 1 "Shared", 2 WPA
    std::int32_t EncryType { 0 }; // index: 0 "NONE", 1 "WEP"; with WPA 0 "TKIP", 1 "AES"
    std::int32_t SelKeyIndex { 0 }; // transmit key, 0 to 3
    std::array<WepKey, wepKeyCount> WepKeys {};
    SecretText WPAPSK; // as typed
};

struct NetworkChoice {
    WLAN_BSSID_EX network {};
    WpaClass wpaClass { WpaClass::NoWpa };
    bool hidden { false };
    NDIS_802_11_SSID ssid {}; // the network's own, or the one typed for a hidden network
};

// An infrastructure network that does not broadcast its name.
[[nodiscard]] bool isHiddenNetwork(const WLAN_BSSID_EX& network);

[[nodiscard]] bool needsSecuritySettings(const NetworkChoice& choice);

// The settings of a full connection. security is null for an open network. An infrastructure network is joined by
// BSSID, and its record has no SSID; ad hoc and hidden networks are joined by SSID.
[[nodiscard]] std::unique_ptr<PROFILE_DATA> connectionRecord(
    const NetworkChoice& choice, const SecuritySettings* security);
