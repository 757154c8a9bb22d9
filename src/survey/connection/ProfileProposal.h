#pragma once

#include "driver/records/NdisRecords.h"
#include "platform/NetworkName.h"

#include <cstdint>

// What the profile editor is pre-filled with for a scanned network.
struct ProfileProposal {
    NetworkName SSID;
    MacAddress BSSID {};
    std::int32_t EcrypStatus { 0 }; // NDIS_802_11_ENCRYPTION_STATUS
    std::int32_t AuthenMode { 0 }; // NDIS_802_11_AUTHENTICATION_MODE
    std::int32_t Networktype { 0 }; // NDIS_802_11_NETWORK_INFRASTRUCTURE
    std::int32_t Channel { 0 };
};
