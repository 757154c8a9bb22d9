#pragma once

#include "driver/records/NdisRecords.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

class AssertionHandler;

// The transmit rates of each wireless mode. Modes 0 and 3 are mixed, mode 1 has only CCK rates, mode 2 only OFDM rates.

inline constexpr std::int32_t cckOnlyMode = 1;
inline constexpr std::int32_t ofdmOnlyMode = 2;

[[nodiscard]] bool isKnownMode(std::int32_t wirelessMode);

// The items of the rate list, starting with "Auto". Unknown modes have the mixed list.
[[nodiscard]] std::vector<QString> transmitRateItems(std::int32_t wirelessMode);

// Returns 0 if the index is beyond the CCK or OFDM list, otherwise the index. Never resets an index for the mixed list.
[[nodiscard]] std::int32_t transmitRateIndexFor(std::int32_t wirelessMode, std::int32_t index);

// b/g protection applies only to networks with both 802.11b and 802.11g stations.
[[nodiscard]] bool modeHasProtection(std::int32_t wirelessMode);

// The desired rates for a mode and an index in its list: one fixed rate, or all rates that "Auto" may use. An unknown
// mode or index is a failed assertion. If the handler continues, they are treated as mixed mode and "Auto"; otherwise
// the result is std::nullopt. Mode 1 uses the mixed list, whose first four rates are the same; its caller limits the
// index.
[[nodiscard]] std::optional<NDIS_802_11_RATES> desiredRates(
    std::int32_t wirelessMode, std::int32_t rateIndex, AssertionHandler& assertions);
