#pragma once

#include "driver/BssidList.h"

#include <cstdint>
#include <optional>
#include <string>

class AssertionHandler;

// What the profile editor is pre-filled with for a network of the list.
struct ProfileProposal {
    std::string SSID; // the bytes of the name up to the first zero
    MacAddress BSSID {};
    std::int32_t EcrypStatus { 0 }; // NDIS_802_11_ENCRYPTION_STATUS
    std::int32_t AuthenMode { 0 }; // NDIS_802_11_AUTHENTICATION_MODE
    std::int32_t Networktype { 0 }; // NDIS_802_11_NETWORK_INFRASTRUCTURE
    std::int32_t Channel { 0 };
};

// A frequency outside ChannelFreqTable is a failed assertion; where its handler says to go on, the channel of the
// table's first row stands in, otherwise there is nothing to propose. A WPA network with 802.1X is proposed like one
// without WPA: a profile cannot hold it, and its owner may still want the rest.
[[nodiscard]] std::optional<ProfileProposal> profileProposal(const BssidEntry& entry, AssertionHandler& assertions);
