#pragma once

#include "services/card/RecordBytes.h"
#include "services/simulator/card/CardState.h"

#include <cstdint>
#include <span>

struct CardAnswer {
    bool accepted { false };
    Bytes output; // empty for sets and refused requests
};

// A card in its neighbourhood: answers driver requests and takes what happens to it from outside. Every operation
// carries the time at which it happens, in milliseconds of a clock that never runs backwards; what was due earlier
// happens first.
class SimulatedCard {
public:
    static constexpr std::int64_t resetDurationMs = 500;

    SimulatedCard(const Scenario& scenario, std::uint64_t seed);

    // One structure call: an OID with or without the set flag, the caller's buffer, the reply capacity in bytes.
    [[nodiscard]] CardAnswer answer(
        std::uint32_t oid, std::span<const std::byte> input, std::uint32_t replyCapacity, std::int64_t nowMs);

    // The card as it is when it gets power.
    void powerUp(std::int64_t nowMs);
    // The card loses its settings and, once it is ready again, wants the profile re-applied: the event flag is raised
    // and the ready flag reads 0 for a while.
    void reset(std::int64_t nowMs);
    void setHardwareRadio(bool isOn, std::int64_t nowMs);
    void raiseEvent();
    void holdReady(bool isHeld);
    [[nodiscard]] bool addNetwork(const ScenarioNetwork& network, std::int64_t nowMs);
    [[nodiscard]] bool removeNetwork(const MacAddress& bssid, std::int64_t nowMs);
    [[nodiscard]] bool moveNetwork(const MacAddress& bssid, std::int32_t signalDbm, std::int64_t nowMs);

    // The card at a time.
    [[nodiscard]] const CardState& stateAt(std::int64_t nowMs);

private:
    CardState m_state;
};
