#include "services/simulator/scenario/Scenario.h"
#include "services/simulator/scenario/ScenarioValues.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

namespace {

const Scenario& defaultScenario()
{
    static const ScenarioResult result = loadScenario(DEFAULT_SCENARIO_FILE);
    EXPECT_TRUE(result.scenario.has_value())
        << result.error.line << ':' << result.error.column << ": " << result.error.text;
    static const Scenario none;
    return result.scenario ? *result.scenario : none;
}

bool has(const std::function<bool(const ScenarioNetwork&)>& description)
{
    const auto& networks = defaultScenario().networks;
    return std::any_of(networks.begin(), networks.end(), description);
}

bool isWep(const ScenarioNetwork& network, std::size_t keyBytes)
{
    return network.security == Security::Wep
        && network.wepKeys[static_cast<std::size_t>(network.transmitKeyIndex)].size() == keyBytes;
}

TEST(DefaultScenario, HasOpenNetworksOnBothBands)
{
    const auto isOpen = [](const ScenarioNetwork& n) { return n.security == Security::Open && !n.adHoc && !n.hidden; };
    EXPECT_TRUE(has([&](const auto& n) { return isOpen(n) && n.channel <= 14; }));
    EXPECT_TRUE(has([&](const auto& n) { return isOpen(n) && n.channel > 14; }));
}

TEST(DefaultScenario, HasWepOfBothLengthsAndAuthentications)
{
    for (const std::size_t keyBytes : { 5u, 13u }) {
        for (const bool isShared : { false, true })
            EXPECT_TRUE(has([&](const auto& n) {
                return isWep(n, keyBytes) && n.sharedKeyAuthentication == isShared && !n.adHoc && !n.hidden;
            })) << keyBytes
                << isShared;
    }
}

TEST(DefaultScenario, HasWepKeysTypedAsTextAndAsDigits)
{
    const auto isText = [](const ScenarioNetwork& n) { return isPrintableAscii(n.wepKeys[0]); };
    for (const std::size_t keyBytes : { 5u, 13u }) {
        EXPECT_TRUE(has([&](const auto& n) { return isWep(n, keyBytes) && isText(n); })) << keyBytes;
        EXPECT_TRUE(has([&](const auto& n) { return isWep(n, keyBytes) && !isText(n); })) << keyBytes;
    }
}

TEST(DefaultScenario, HasANetworkWithFourKeysThatTransmitsWithAnotherThanTheFirst)
{
    EXPECT_TRUE(has([](const auto& n) {
        return n.security == Security::Wep && n.transmitKeyIndex != 0
            && std::none_of(n.wepKeys.begin(), n.wepKeys.end(), [](const auto& key) { return key.empty(); });
    }));
}

TEST(DefaultScenario, HasPresharedKeysOfEachKind)
{
    const auto isPsk = [](const ScenarioNetwork& n) { return n.security == Security::WpaPsk && !n.hidden; };
    for (const Cipher cipher : { Cipher::Tkip, Cipher::Aes })
        EXPECT_TRUE(has([&](const auto& n) { return isPsk(n) && n.cipher == cipher && !n.passphrase.empty(); }));
    EXPECT_TRUE(has([&](const auto& n) { return isPsk(n) && n.presharedKey.has_value(); }));
}

TEST(DefaultScenario, HasANetworkWithEnterpriseSecurity)
{
    EXPECT_TRUE(has([](const auto& n) { return n.security == Security::WpaEnterprise; }));
}

TEST(DefaultScenario, HasAdHocNetworksOfEachKind)
{
    const auto isAdHoc = [](const ScenarioNetwork& n, Security security) { return n.adHoc && n.security == security; };
    EXPECT_TRUE(has([&](const auto& n) { return isAdHoc(n, Security::Open); }));
    EXPECT_TRUE(has([&](const auto& n) { return isAdHoc(n, Security::Wep); }));
    for (const Cipher cipher : { Cipher::Tkip, Cipher::Aes })
        EXPECT_TRUE(has([&](const auto& n) { return isAdHoc(n, Security::WpaNone) && n.cipher == cipher; }));
}

TEST(DefaultScenario, HasHiddenNetworksOfEachKind)
{
    for (const Security security : { Security::Open, Security::Wep, Security::WpaPsk })
        EXPECT_TRUE(has([&](const auto& n) { return n.hidden && !n.adHoc && n.security == security; }));
}

TEST(DefaultScenario, HasNamesOfEveryKind)
{
    EXPECT_TRUE(has([](const auto& n) { return n.ssid.size() == 32; }));
    EXPECT_TRUE(has([](const auto& n) { return n.ssid == "F\xC3\xA4hre \xC3\x86r\xC3\xB8 \xE2\x9A\x93"; }));
    EXPECT_TRUE(has([](const auto& n) { return n.ssid == "Caf\xE9"; }));
}

TEST(DefaultScenario, HasDriftAndMostlyClearSignals)
{
    const auto& networks = defaultScenario().networks;
    EXPECT_TRUE(std::all_of(networks.begin(), networks.end(), [](const auto& n) { return n.driftDb > 0; }));
    const auto clear
        = std::count_if(networks.begin(), networks.end(), [](const auto& n) { return n.signalDbm - n.driftDb > -90; });
    EXPECT_GE(clear + 1, std::ssize(networks));
}

// Users choose networks by name.
TEST(DefaultScenario, HasUniqueNames)
{
    std::vector<std::string> names;
    for (const ScenarioNetwork& network : defaultScenario().networks)
        names.push_back(network.ssid);
    std::sort(names.begin(), names.end());
    EXPECT_EQ(std::adjacent_find(names.begin(), names.end()), names.end());
}

} // namespace
