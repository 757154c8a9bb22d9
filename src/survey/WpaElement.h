#pragma once

#include "driver/BssidList.h"

#include <cstddef>
#include <cstdint>
#include <optional>

// The WPA information element (id 221, organisation 00-50-F2, type 1) of a scan entry, as the driver's lists
// are read.

// What the element's place tells; the cipher suites behind it are read from the entry.
struct WpaElement {
    std::size_t offset { 0 }; // of the element's id byte within the entry
    std::uint8_t groupSuiteType { 0 }; // 2 TKIP, 3 AES-WRAP, 4 AES-CCMP
};

// Nothing when the entry carries no WPA element that this walk can see, or its group suite is of another
// organisation. The walk advances by an element's length byte alone, without its two header bytes: the lists
// of this driver are read so, and what a network is shown as depends on it.
[[nodiscard]] std::optional<WpaElement> findWpaElement(const BssidEntry& entry);

// "TKIP", "AES-WRAP" or "AES-CCMP"; null for another group suite.
[[nodiscard]] const char* cipherText(const WpaElement& element);

// The type of the first authentication suite behind this many pairwise suites; nothing when the element
// counts no authentication suites or the first is of another organisation.
[[nodiscard]] std::optional<std::uint8_t> firstAuthenticationSuite(
    const BssidEntry& entry, const WpaElement& element, std::uint16_t pairwiseSuites);

[[nodiscard]] std::uint16_t pairwiseSuiteCount(const BssidEntry& entry, const WpaElement& element);
void setPairwiseSuiteCount(BssidEntry& entry, const WpaElement& element, std::uint16_t count);
