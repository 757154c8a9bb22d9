#pragma once

#include "services/card/RecordBytes.h"
#include "services/simulator/card/Neighbourhood.h"

#include <cstdint>
#include <vector>

// Rates that a network offers, in units of 500 kbit/s, without the basic-rate bit; the basic ones first.
[[nodiscard]] std::vector<std::uint8_t> supportedRates(const ScenarioNetwork& network);

// Centre frequency in kHz; 0 for a channel that the table does not have.
[[nodiscard]] std::uint32_t frequencyOfChannel(std::int32_t channel);

// What the beacon of a network says, as one entry of a scan result: a WLAN_BSSID_EX with the information elements of
// IEEE 802.11 behind it. A hidden network says neither its name nor the name's length.
[[nodiscard]] Bytes encodeBssidEntry(const HeardNetwork& heard, std::int64_t nowMs);
