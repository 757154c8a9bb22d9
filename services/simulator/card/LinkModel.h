#pragma once

#include "services/card/CardSettings.h"
#include "services/simulator/scenario/Scenario.h"

#include <cstdint>

// Link quality as a function of the signal in dBm.

// The transmit rate in units of 500 kbit/s: the fastest rate that the network offers, the desired rates allow and the
// signal supports, or the slowest offered and allowed rate if the signal supports none. Desired rates have no effect if
// the network offers none of them or all are 0.
[[nodiscard]] std::uint32_t linkRate(
    const ScenarioNetwork& network, const NDIS_802_11_RATES& desiredRates, std::int32_t signalDbm);

// The driver's raw channel quality, 0 to 100; the utility shows 75 and above as a perfect link.
[[nodiscard]] std::uint32_t channelQuality(std::int32_t signalDbm);

// The share of frames that are retransmitted, 0.005 to 0.4.
[[nodiscard]] double retryShare(std::int32_t signalDbm);
