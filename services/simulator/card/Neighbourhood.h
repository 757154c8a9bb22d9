#pragma once

#include "services/simulator/scenario/Scenario.h"

#include <cstdint>
#include <optional>
#include <vector>

// A network as the card hears it at one moment.
struct HeardNetwork {
    ScenarioNetwork network;
    std::int32_t signalDbm { 0 };
};

// The networks around the card. A signal depends only on the seed and the time, so queries have no side effects and
// tests are reproducible.
class Neighbourhood {
public:
    // Weaker signals are not heard.
    static constexpr std::int32_t minSignalDbm = -95;

    Neighbourhood(std::vector<ScenarioNetwork> networks, std::uint64_t seed);

    // Returns false if a network with this BSSID already exists.
    [[nodiscard]] bool add(const ScenarioNetwork& network);
    // Both return false if no network has this BSSID.
    [[nodiscard]] bool remove(const MacAddress& bssid);
    [[nodiscard]] bool move(const MacAddress& bssid, std::int32_t signalDbm);

    [[nodiscard]] const std::vector<ScenarioNetwork>& networks() const { return m_networks; }

    // The signal at a time, within driftDb of the network's nominal signal.
    [[nodiscard]] std::int32_t signalDbm(const ScenarioNetwork& network, std::int64_t nowMs) const;

    // Every network that can be heard, in the order of the scenario; 5 GHz networks only if fiveGhz is true.
    [[nodiscard]] std::vector<HeardNetwork> inRange(std::int64_t nowMs, bool fiveGhz) const;

private:
    std::vector<ScenarioNetwork> m_networks;
    std::uint64_t m_seed;
};

[[nodiscard]] bool isFiveGhz(const ScenarioNetwork& network);
