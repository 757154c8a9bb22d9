#pragma once

#include "services/card/CardSettings.h"
#include "services/simulator/card/Association.h"
#include "services/simulator/card/Counters.h"
#include "services/simulator/card/Neighbourhood.h"
#include "services/simulator/card/ScanList.h"
#include "services/simulator/scenario/Scenario.h"

#include <cstdint>

// The complete state of a simulated card. Times are milliseconds of a monotonic clock.
struct CardState {
    CardState(const Scenario& scenario, std::uint64_t randomSeed);

    ScenarioCard hardware; // hardwareRadioOn is the current position of the switch
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

    // Simulates the time up to newNowMs: ends scans, brings associations up and down, moves counters.
    void advance(std::int64_t newNowMs);
    // Resets the card to its power-up state. The networks, the hardware and a held ready flag do not change.
    void powerUp();
};
