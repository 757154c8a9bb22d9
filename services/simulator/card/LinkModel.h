#pragma once

#include "services/simulator/card/CardSettings.h"
#include "services/simulator/scenario/Scenario.h"

#include <cstdint>

// How well a link works at a signal, in dBm.

// The transmit rate in units of 500 kbit/s: the fastest that the network offers, the desired rates allow and the signal
// carries; where the signal carries none of those, the slowest of them. Desired rates of which the network offers
// none, or that are all 0, do not restrict it.
[[nodiscard]] std::uint32_t linkRate(
    const ScenarioNetwork& network, const NDIS_802_11_RATES& desiredRates, std::int32_t signalDbm);

// The driver's raw figure, 0 to 100; the utility takes 75 and more for a perfect link.
[[nodiscard]] std::uint32_t channelQuality(std::int32_t signalDbm);

// The share of frames that have to be sent again, 0.005 to 0.4.
[[nodiscard]] double retryShare(std::int32_t signalDbm);
