#pragma once

#include "services/simulator/scenario/Scenario.h"

#include <cstdint>
#include <optional>
#include <vector>

// A network as the card hears it at some moment.
struct HeardNetwork {
    ScenarioNetwork network;
    std::int32_t signalDbm { 0 };
};

// The networks around the card. A signal is a function of the time alone, so that asking changes nothing and a test
// with the same seed sees the same drift.
class Neighbourhood {
public:
    // A weaker signal is not heard, in dBm.
    static constexpr std::int32_t weakestSignalDbm = -95;

    Neighbourhood(std::vector<ScenarioNetwork> networks, std::uint64_t seed);

    // False when a network with this BSSID is there already.
    [[nodiscard]] bool add(const ScenarioNetwork& network);
    // False when there is no such network.
    [[nodiscard]] bool remove(const MacAddress& bssid);
    [[nodiscard]] bool move(const MacAddress& bssid, std::int32_t signalDbm);

    [[nodiscard]] const std::vector<ScenarioNetwork>& networks() const { return m_networks; }

    // The signal at a time, within driftDb of the network's own.
    [[nodiscard]] std::int32_t signalDbm(const ScenarioNetwork& network, std::int64_t nowMs) const;

    // Every network that can be heard, in the order of the scenario; those above 2.4 GHz only with fiveGhz.
    [[nodiscard]] std::vector<HeardNetwork> inRange(std::int64_t nowMs, bool fiveGhz) const;

private:
    std::vector<ScenarioNetwork> m_networks;
    std::uint64_t m_seed;
};

[[nodiscard]] bool isFiveGhz(const ScenarioNetwork& network);
