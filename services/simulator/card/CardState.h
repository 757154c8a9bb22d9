#pragma once

#include "services/simulator/card/Association.h"
#include "services/simulator/card/CardSettings.h"
#include "services/simulator/card/Counters.h"
#include "services/simulator/card/Neighbourhood.h"
#include "services/simulator/card/ScanList.h"
#include "services/simulator/scenario/Scenario.h"

#include <cstdint>

// Everything that a simulated card is at a moment. Times are milliseconds of a clock that never runs backwards.
struct CardState {
    CardState(const Scenario& scenario, std::uint64_t randomSeed);

    ScenarioCard hardware; // hardwareRadioOn is the switch as it stands now
    Neighbourhood neighbourhood;
    CardSettings settings;
    ScanList scanList;
    Association association;
    Counters counters;
    bool isEventRaised { false };
    bool isReadyHeld { false };
    std::int64_t readyAtMs { 0 };
    std::int64_t nowMs { 0 };
    std::uint64_t seed;

    [[nodiscard]] bool isRadioOn() const { return hardware.hardwareRadioOn && settings.radioOn; }
    [[nodiscard]] bool isReady() const { return !isReadyHeld && nowMs >= readyAtMs; }

    // Lets the time up to nowMs pass: scans end, associations come up and go down, counters move.
    void advance(std::int64_t newNowMs);
    // The state of a card that has just got power; the neighbourhood, the hardware and a held ready flag stay.
    void powerUp();
};
