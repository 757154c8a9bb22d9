#pragma once

#include "driver/BssidList.h"

#include <cstddef>
#include <cstdint>
#include <optional>

// The WPA information element (id 221, OUI 00-50-F2, type 1) of a scan list entry.

struct WpaElement {
    std::size_t offset { 0 }; // of the element's id byte from the start of the entry
    std::uint8_t groupSuiteType { 0 }; // 2 TKIP, 3 AES-WRAP, 4 AES-CCMP
};

// Returns std::nullopt if the walk finds no WPA element, or its group suite has another OUI. The walk advances by the
// length byte only, without the two header bytes, because the security shown for a network depends on it.
[[nodiscard]] std::optional<WpaElement> findWpaElement(const BssidEntry& entry);

// "TKIP", "AES-WRAP" or "AES-CCMP"; nullptr for any other group suite.
[[nodiscard]] const char* cipherText(const WpaElement& element);

// The type of the first AKM suite after this many pairwise suites. Returns std::nullopt if the element has no AKM suites
// or the first has another OUI.
[[nodiscard]] std::optional<std::uint8_t> firstAkmSuite(
    const BssidEntry& entry, const WpaElement& element, std::uint16_t pairwiseSuites);

[[nodiscard]] std::uint16_t pairwiseSuiteCount(const BssidEntry& entry, const WpaElement& element);
void setPairwiseSuiteCount(BssidEntry& entry, const WpaElement& element, std::uint16_t count);
