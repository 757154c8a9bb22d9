#pragma once

#include "services/card/BssidEncoder.h"
#include "services/simulator/card/Neighbourhood.h"

#include <cstdint>
#include <vector>

// Rates that a network offers, in units of 500 kbit/s, without the basic-rate bit; basic rates first.
[[nodiscard]] std::vector<std::uint8_t> supportedRates(const ScenarioNetwork& network);

// Centre frequency in kHz; 0 for a channel that ChannelFreqTable does not have.
[[nodiscard]] std::uint32_t frequencyOfChannel(std::int32_t channel);

// The beacon of a simulated network, with the information elements of IEEE 802.11. A hidden network discloses neither
// its name nor the length of its name.
[[nodiscard]] BssDescription beaconOf(const HeardNetwork& heard, std::int64_t nowMs);
