#include "services/simulator/scenario/DefaultScenario.h"
#include "tests/services/simulator/card/UtilityJoin.h"

#include <gtest/gtest.h>

namespace {

Scenario defaultScenario()
{
    const ScenarioResult result = parseScenario(defaultScenarioText());
    EXPECT_TRUE(result.scenario) << result.error.line << ':' << result.error.column << ": " << result.error.text;
    return result.scenario.value_or(Scenario {});
}

// The default scenario with a constant strong signal, so that the results do not depend on drift.
Scenario scenarioWithoutDrift()
{
    Scenario scenario = defaultScenario();
    for (ScenarioNetwork& network : scenario.networks) {
        network.signalDbm = -60;
        network.driftDb = 0;
    }
    return scenario;
}

// Only one network, so that no other network of the same name can be joined.
CardUnderTest cardNear(const ScenarioNetwork& network)
{
    Scenario scenario = scenarioWithoutDrift();
    std::erase_if(scenario.networks, [&network](const ScenarioNetwork& other) { return other.bssid != network.bssid; });
    return CardUnderTest(scenario);
}

std::string nameOf(const testing::TestParamInfo<ScenarioNetwork>& info)
{
    std::string name = "Network" + std::to_string(info.index);
    for (const char character : info.param.ssid) {
        if (std::isalnum(static_cast<unsigned char>(character)) != 0)
            name += character;
    }
    return name;
}

std::vector<ScenarioNetwork> networksWith(bool (*matches)(const ScenarioNetwork&))
{
    std::vector<ScenarioNetwork> networks
        = parseScenario(defaultScenarioText()).scenario.value_or(Scenario {}).networks;
    std::erase_if(networks, [matches](const ScenarioNetwork& network) { return !matches(network); });
    return networks;
}

bool isJoinable(const ScenarioNetwork& network)
{
    return network.security != Security::WpaEnterprise;
}

bool isEnterprise(const ScenarioNetwork& network)
{
    return network.security == Security::WpaEnterprise;
}

bool isWep(const ScenarioNetwork& network)
{
    return network.security == Security::Wep;
}

bool hasPresharedKey(const ScenarioNetwork& network)
{
    return network.security == Security::WpaPsk || network.security == Security::WpaNone;
}

class DefaultScenarioJoinable : public testing::TestWithParam<ScenarioNetwork> { };
class DefaultScenarioWep : public testing::TestWithParam<ScenarioNetwork> { };
class DefaultScenarioPresharedKey : public testing::TestWithParam<ScenarioNetwork> { };
class DefaultScenarioEnterprise : public testing::TestWithParam<ScenarioNetwork> { };

} // namespace

TEST(DefaultScenario, ListsEveryNetworkAfterOneScan)
{
    CardUnderTest card(scenarioWithoutDrift());
    card.scan();
    EXPECT_EQ(card.card.stateAt(card.nowMs).scanList.size(), defaultScenario().networks.size());
}

TEST_P(DefaultScenarioJoinable, IsJoinedWithItsSettings)
{
    CardUnderTest card = cardNear(GetParam());
    EXPECT_TRUE(comesUp(card, correctJoin(GetParam())));
    EXPECT_FALSE(card.card.stateAt(card.nowMs).association.isCreatedNetwork());
    EXPECT_EQ(card.query<MacAddress>(OID_802_11_BSSID), GetParam().bssid);
    EXPECT_EQ(card.query<NDIS_802_11_SSID>(OID_802_11_SSID)->Ssid, ssidRecord(GetParam().ssid).Ssid);
}

TEST_P(DefaultScenarioJoinable, IsJoinedAmongAllNetworks)
{
    CardUnderTest card(scenarioWithoutDrift());
    EXPECT_TRUE(comesUp(card, correctJoin(GetParam())));
    EXPECT_EQ(card.query<MacAddress>(OID_802_11_BSSID), GetParam().bssid);
}

TEST_P(DefaultScenarioJoinable, RejectsOtherModesEncryptionsAndAuthentications)
{
    CardUnderTest card = cardNear(GetParam());
    UtilityJoin join = correctJoin(GetParam());
    join.networkType = GetParam().adHoc ? Ndis802_11Infrastructure : Ndis802_11IBSS;
    EXPECT_FALSE(comesUp(card, join));

    for (const std::int32_t encryption : { Ndis802_11Encryption1Enabled, Ndis802_11EncryptionDisabled,
             Ndis802_11Encryption2Enabled, Ndis802_11Encryption3Enabled }) {
        join = correctJoin(GetParam());
        const bool isRight = join.encryption == encryption;
        join.encryption = encryption;
        EXPECT_EQ(comesUp(card, join), isRight) << encryption;
    }
    for (const std::int32_t authentication : { Ndis802_11AuthModeOpen, Ndis802_11AuthModeShared, Ndis802_11AuthModeWPA,
             Ndis802_11AuthModeWPAPSK, Ndis802_11AuthModeWPANone }) {
        join = correctJoin(GetParam());
        const bool isRight = join.authentication == authentication;
        join.authentication = authentication;
        EXPECT_EQ(comesUp(card, join), isRight) << authentication;
    }
}

TEST_P(DefaultScenarioWep, AcceptsOnlyItsKeyAtEachIndex)
{
    for (std::size_t index = 0; index < 4; ++index) {
        CardUnderTest card = cardNear(GetParam());
        UtilityJoin join = correctJoin(GetParam());
        join.transmitKey = index;
        const bool hasKey = !GetParam().wepKeys[index].empty();
        EXPECT_EQ(comesUp(card, join), hasKey) << "index " << index;
        if (!hasKey)
            continue;
        for (std::size_t byte = 0; byte < join.wepKeys[index].size(); ++byte) {
            UtilityJoin wrong = join;
            wrong.wepKeys[index][byte] = static_cast<char>(wrong.wepKeys[index][byte] ^ 1);
            EXPECT_FALSE(comesUp(card, wrong)) << "index " << index << " byte " << byte;
        }
        EXPECT_TRUE(comesUp(card, join)) << "index " << index;
    }
}

TEST_P(DefaultScenarioWep, RejectsItsKeyAtOtherIndicesAndOtherKeyLengths)
{
    const auto transmit = static_cast<std::size_t>(GetParam().transmitKeyIndex);
    const std::string key = GetParam().wepKeys[transmit];
    for (std::size_t index = 0; index < 4; ++index) {
        if (GetParam().wepKeys[index] == key)
            continue;
        CardUnderTest card = cardNear(GetParam());
        UtilityJoin join = correctJoin(GetParam());
        join.wepKeys = {};
        join.wepKeys[index] = key;
        join.transmitKey = index;
        EXPECT_FALSE(comesUp(card, join)) << "index " << index;
    }
    CardUnderTest card = cardNear(GetParam());
    UtilityJoin join = correctJoin(GetParam());
    join.wepKeys[transmit] = (key + std::string(13, 'x')).substr(0, key.size() == 5 ? 13 : 5);
    EXPECT_FALSE(comesUp(card, join));
    join.wepKeys[transmit].clear();
    EXPECT_FALSE(comesUp(card, join));
}

TEST_P(DefaultScenarioPresharedKey, AcceptsOnlyItsKey)
{
    CardUnderTest card = cardNear(GetParam());
    const UtilityJoin right = correctJoin(GetParam());
    for (const std::size_t byte : { 0U, 15U, 31U }) {
        UtilityJoin wrong = right;
        wrong.presharedKey[byte] = static_cast<char>(wrong.presharedKey[byte] ^ 0x80);
        EXPECT_FALSE(comesUp(card, wrong)) << "byte " << byte;
    }
    EXPECT_TRUE(comesUp(card, right));
}

TEST_P(DefaultScenarioEnterprise, IsNeverJoined)
{
    CardUnderTest card = cardNear(GetParam());
    UtilityJoin join = correctJoin(GetParam());
    for (std::int32_t authentication = 0; authentication <= Ndis802_11AuthModeWPANone; ++authentication) {
        join.authentication = authentication;
        join.presharedKey = std::string(32, 'k');
        EXPECT_FALSE(comesUp(card, join)) << authentication;
    }
}

INSTANTIATE_TEST_SUITE_P(Kinds, DefaultScenarioJoinable, testing::ValuesIn(networksWith(isJoinable)), nameOf);
INSTANTIATE_TEST_SUITE_P(Kinds, DefaultScenarioWep, testing::ValuesIn(networksWith(isWep)), nameOf);
INSTANTIATE_TEST_SUITE_P(Kinds, DefaultScenarioPresharedKey, testing::ValuesIn(networksWith(hasPresharedKey)), nameOf);
INSTANTIATE_TEST_SUITE_P(Kinds, DefaultScenarioEnterprise, testing::ValuesIn(networksWith(isEnterprise)), nameOf);
