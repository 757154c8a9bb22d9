#pragma once

#include "driver/BssidList.h"

#include <cstdint>

// What a scan entry says of the security of its network, as the connect and profile paths read it.

enum class WpaClass : std::int32_t {
    Unknown = 0, // no WPA, or none that is known
    Enterprise = 1, // WPA with 802.1X
    PreSharedKey = 2,
    None = 3, // WPA-None, the pre-shared key of ad hoc networks
};

[[nodiscard]] WpaClass wpaClassOf(const BssidEntry& entry);

// "WEP" with privacy and "Not Used" without, or the cipher that a WPA element names: "TKIP", "AES-WRAP", "AES-CCMP".
[[nodiscard]] const char* encryptionTextOf(const BssidEntry& entry);
