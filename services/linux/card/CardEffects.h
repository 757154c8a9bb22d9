#pragma once

#include "services/linux/card/NetworkBlock.h"
#include "services/linux/wire/Nl80211Values.h"

#include <cstdint>
#include <optional>
#include <variant>
#include <vector>

// What the card wants done outside. Nobody waits for it; what comes of it is told to the card as a fact.

struct StartScan {
    std::vector<std::uint32_t> frequenciesMhz;
    bool isListening { false }; // waits for beacons instead of asking the networks to answer
    Octets ssid; // also asked for by name, which makes a hidden network answer; may be empty
};
struct AbortScan { };
struct JoinNetwork {
    NetworkBlock block;
};
// The network was not heard where it was last seen, or the allowed channels have changed.
struct WidenSearch {
    std::vector<std::uint32_t> frequenciesMhz;
    bool isUrgent { false }; // search now, not in the supplicant's own time
};
struct LeaveNetwork { };
// No threshold: never.
struct SetRtsThreshold {
    std::optional<std::uint32_t> bytes;
};
struct SetFragmentationThreshold {
    std::optional<std::uint32_t> bytes;
};
// Rates in units of 500 kbit/s; an empty list allows all rates of a band. No list for a band that the device lacks.
struct SetRates {
    std::optional<std::vector<std::uint8_t>> twoGhz;
    std::optional<std::vector<std::uint8_t>> fiveGhz;
    // The kernel has to be told for each of the newer rates that a limited band does without them, and refuses that for
    // rates that the device does not have.
    WiphyFacts::NewerRates twoGhzNewer {};
    WiphyFacts::NewerRates fiveGhzNewer {};
};
struct SetPowerSave {
    bool isOn { false };
};
// No value: as much as the channel allows.
struct SetTransmitPower {
    std::optional<std::int32_t> mbm;
};
struct SetRadio {
    bool isOn { true };
};
struct BringUp { };

using Effect = std::variant<StartScan, AbortScan, JoinNetwork, WidenSearch, LeaveNetwork, SetRtsThreshold,
    SetFragmentationThreshold, SetRates, SetPowerSave, SetTransmitPower, SetRadio, BringUp>;
using Effects = std::vector<Effect>;
