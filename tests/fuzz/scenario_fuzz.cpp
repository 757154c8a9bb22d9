// Any file gives either a scenario that satisfies the rules and can be described, or an error with a text.

#include "services/simulator/scenario/JoinHints.h"
#include "services/simulator/scenario/ScenarioValues.h"
#include "tests/fuzz/Require.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace {

void checkNetwork(const ScenarioNetwork& network)
{
    require(!network.ssid.empty() && network.ssid.size() <= maxSsidBytes);
    require(isStationAddress(network.bssid));
    require(isChannel(network.channel));
    require(network.signalDbm >= -100 && network.signalDbm <= -10);
    require(network.driftDb >= 0 && network.driftDb <= 20);
    require(network.transmitKeyIndex >= 0 && network.transmitKeyIndex < 4);
    const auto transmitKey = static_cast<std::size_t>(network.transmitKeyIndex);
    require((network.security == Security::Wep) != network.wepKeys[transmitKey].empty());
    require(network.security != Security::WpaNone || network.adHoc);
    const bool hasPresharedKey = network.presharedKey.has_value() || !network.passphrase.empty();
    require(hasPresharedKey == (network.security == Security::WpaPsk || network.security == Security::WpaNone));
}

void check(const ScenarioResult& result)
{
    require(result.scenario.has_value() == result.error.text.empty());
    if (!result.scenario)
        return;
    for (const ScenarioNetwork& network : result.scenario->networks)
        checkNetwork(network);
    const std::string hints = joinHints(*result.scenario);
    require(std::count(hints.begin(), hints.end(), '\n') == std::ssize(result.scenario->networks) + 1);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    check(parseScenario(text));
    check(parseScenarioNetwork(text));
    return 0;
}
