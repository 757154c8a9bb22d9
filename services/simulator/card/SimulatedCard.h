#pragma once

#include "services/card/RecordBytes.h"
#include "services/simulator/card/CardState.h"

#include <cstdint>
#include <span>

struct CardAnswer {
    bool accepted { false };
    Bytes output; // empty for sets and refused requests
};

// A simulated card: answers driver requests and reacts to changes from outside. Every operation takes the current time
// in milliseconds of a monotonic clock and first advances the card to it.
class SimulatedCard {
public:
    static constexpr std::int64_t resetDurationMs = 500;

    SimulatedCard(const Scenario& scenario, std::uint64_t seed);

    // One structure call: the OID with or without the set flag, the client's buffer, the reply capacity in bytes.
    [[nodiscard]] CardAnswer answer(
        std::uint32_t oid, std::span<const std::byte> input, std::uint32_t replyCapacity, std::int64_t nowMs);

    void powerUp(std::int64_t nowMs);
    // Resets the settings and raises the event flag, so that the utility re-applies the profile. The ready flag reads 0
    // for resetDurationMs.
    void reset(std::int64_t nowMs);
    void setHardwareRadio(bool isOn, std::int64_t nowMs);
    void raiseEvent();
    void holdReady(bool isHeld);
    [[nodiscard]] bool addNetwork(const ScenarioNetwork& network, std::int64_t nowMs);
    [[nodiscard]] bool removeNetwork(const MacAddress& bssid, std::int64_t nowMs);
    [[nodiscard]] bool moveNetwork(const MacAddress& bssid, std::int32_t signalDbm, std::int64_t nowMs);

    [[nodiscard]] const CardState& stateAt(std::int64_t nowMs);

private:
    CardState m_state;
};
