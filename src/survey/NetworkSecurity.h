#pragma once

#include "driver/BssidList.h"
#include "survey/WpaElement.h"

#include <cstdint>

// The security of a network according to its scan list entry.

enum class WpaClass : std::int32_t {
    NoWpa = 0, // or an unknown AKM suite
    Enterprise = 1, // WPA with 802.1X
    PreSharedKey = 2, // WPA-PSK
    WpaNone = 3, // the pre-shared key of ad hoc networks
};

[[nodiscard]] constexpr bool usesPresharedKey(WpaClass wpaClass)
{
    return wpaClass == WpaClass::PreSharedKey || wpaClass == WpaClass::WpaNone;
}

// The class of a WPA element whose AKM suites follow this many pairwise suites.
[[nodiscard]] WpaClass wpaClassOf(const BssidEntry& entry, const WpaElement& element, std::uint16_t pairwiseSuites);

// The class of a scan list entry, for connecting and for profiles.
[[nodiscard]] WpaClass IsItemWPA(const BssidEntry& entry);

// "WPA", "WPA-PSK", "WPA-NONE" or "Unknown".
[[nodiscard]] const char* authenticationText(WpaClass wpaClass);

// The cipher of the WPA element ("TKIP", "AES-WRAP" or "AES-CCMP"); otherwise "WEP" with privacy and "Not Used" without.
[[nodiscard]] const char* encryptionTextOf(const BssidEntry& entry);
