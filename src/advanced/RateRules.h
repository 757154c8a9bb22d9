#pragma once

#include "driver/records/NdisRecords.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

class AssertionHandler;

// What the wireless mode makes of the transmit rates. Modes: 0 and 3 mixed, 1 CCK rates only, 2 OFDM rates only.

inline constexpr std::int32_t cckOnlyMode = 1;
inline constexpr std::int32_t ofdmOnlyMode = 2;

[[nodiscard]] bool isKnownMode(std::int32_t wirelessMode);

// The items of the rate list; index 0 is "Auto". Modes other than 1 and 2 show the mixed list.
[[nodiscard]] std::vector<QString> transmitRateItems(std::int32_t wirelessMode);

// The index as it is, or 0 where the mode's list is too short for it. The mixed list is never too short: its index
// comes from its own items.
[[nodiscard]] std::int32_t transmitRateIndexFor(std::int32_t wirelessMode, std::int32_t index);

// Protection is for networks that mix 802.11b and 802.11g stations.
[[nodiscard]] bool protectionHasMeaning(std::int32_t wirelessMode);

// The desired rates for a mode and an index into its list: a fixed rate alone, or all that automatic choice may use.
// A mode or index outside the tables is a failed assertion; where its handler says to go on, the mixed list's rules and
// automatic choice stand in, otherwise there is nothing to send.
[[nodiscard]] std::optional<NDIS_802_11_RATES> desiredRates(
    std::int32_t wirelessMode, std::int32_t rateIndex, AssertionHandler& assertions);
