#include "services/simulator/card/JoinRules.h"

#include "tests/services/simulator/card/CardUnderTest.h"

#include <gtest/gtest.h>

namespace {

ScenarioNetwork wepNetwork()
{
    ScenarioNetwork network = openNetwork("wep", 1);
    network.security = Security::Wep;
    network.wepKeys = { "key-0", "", "key-2", "thirteen-by-3" };
    network.transmitKeyIndex = 2;
    return network;
}

CardSettings wepSettings()
{
    CardSettings settings;
    settings.encryptionStatus = Ndis802_11Encryption1Enabled;
    const ScenarioNetwork network = wepNetwork();
    for (std::size_t i = 0; i < 4; ++i)
        settings.wepKeys[i].assign(network.wepKeys[i].begin(), network.wepKeys[i].end());
    settings.transmitKeyIndex = 0;
    return settings;
}

ScenarioNetwork pskNetwork()
{
    ScenarioNetwork network = openNetwork("IEEE", 1);
    network.security = Security::WpaPsk;
    network.cipher = Cipher::Aes;
    network.passphrase = "password";
    return network;
}

CardSettings pskSettings()
{
    CardSettings settings;
    settings.authenticationMode = Ndis802_11AuthModeWPAPSK;
    settings.encryptionStatus = Ndis802_11Encryption3Enabled;
    settings.wpaKey = expectedPresharedKey(pskNetwork());
    return settings;
}

} // namespace

TEST(JoinRules, DerivesTheKeyOfTheIeeeTestVector)
{
    // IEEE 802.11i, first test vector of the passphrase mapping
    const PresharedKey expected { 0xF4, 0x2C, 0x6F, 0xC5, 0x2D, 0xF0, 0xEB, 0xEF, 0x9E, 0xBB, 0x4B, 0x90, 0xB3, 0x8A,
        0x5F, 0x90, 0x2E, 0x83, 0xFE, 0x1B, 0x13, 0x5A, 0x70, 0xE2, 0x3A, 0xED, 0x76, 0x2E, 0x97, 0x10, 0xA1, 0x2E };
    EXPECT_EQ(expectedPresharedKey(pskNetwork()), expected);
}

TEST(JoinRules, PresharedKeyTakesPrecedenceOverPassphrase)
{
    ScenarioNetwork network = pskNetwork();
    network.presharedKey.emplace().fill(7);
    EXPECT_EQ(expectedPresharedKey(network), network.presharedKey);
    EXPECT_FALSE(expectedPresharedKey(openNetwork("open", 1)));
}

TEST(JoinRules, OpenNetworkRejectsEncryption)
{
    CardSettings settings;
    EXPECT_TRUE(settingsFit(settings, openNetwork("open", 1)));
    settings.authenticationMode = Ndis802_11AuthModeShared;
    EXPECT_FALSE(settingsFit(settings, openNetwork("open", 1)));
    settings = wepSettings();
    EXPECT_FALSE(settingsFit(settings, openNetwork("open", 1)));
}

TEST(JoinRules, ModeMustMatch)
{
    ScenarioNetwork network = openNetwork("open", 1);
    CardSettings settings;
    settings.infrastructureMode = Ndis802_11IBSS;
    EXPECT_FALSE(settingsFit(settings, network));
    settings.infrastructureMode = Ndis802_11AutoUnknown;
    EXPECT_TRUE(settingsFit(settings, network));
    network.adHoc = true;
    EXPECT_TRUE(settingsFit(settings, network));
    settings.infrastructureMode = Ndis802_11Infrastructure;
    EXPECT_FALSE(settingsFit(settings, network));
}

TEST(JoinRules, WepRequiresBothTransmitKeys)
{
    EXPECT_TRUE(settingsFit(wepSettings(), wepNetwork()));

    CardSettings settings = wepSettings();
    settings.wepKeys[2][4] ^= 1; // the network's transmit key
    EXPECT_FALSE(settingsFit(settings, wepNetwork()));
    settings = wepSettings();
    settings.wepKeys[0][0] ^= 1; // the card's transmit key
    EXPECT_FALSE(settingsFit(settings, wepNetwork()));
    settings = wepSettings();
    settings.wepKeys[3].clear(); // a key that neither side transmits with
    EXPECT_TRUE(settingsFit(settings, wepNetwork()));
    settings.transmitKeyIndex = 3;
    EXPECT_FALSE(settingsFit(settings, wepNetwork()));
    settings = wepSettings();
    settings.transmitKeyIndex = 1; // neither side has this key, which must not count as a match
    EXPECT_FALSE(settingsFit(settings, wepNetwork()));
    settings.transmitKeyIndex.reset();
    EXPECT_FALSE(settingsFit(settings, wepNetwork()));
}

TEST(JoinRules, WepRequiresMatchingAuthenticationAndEncryption)
{
    CardSettings settings = wepSettings();
    settings.authenticationMode = Ndis802_11AuthModeShared;
    EXPECT_FALSE(settingsFit(settings, wepNetwork()));
    ScenarioNetwork shared = wepNetwork();
    shared.sharedKeyAuthentication = true;
    EXPECT_TRUE(settingsFit(settings, shared));
    settings.authenticationMode = Ndis802_11AuthModeAutoSwitch;
    EXPECT_TRUE(settingsFit(settings, shared));
    settings.encryptionStatus = Ndis802_11EncryptionDisabled;
    EXPECT_FALSE(settingsFit(settings, shared));
}

TEST(JoinRules, WpaRequiresMatchingAuthenticationCipherAndKey)
{
    EXPECT_TRUE(settingsFit(pskSettings(), pskNetwork()));
    CardSettings settings = pskSettings();
    settings.encryptionStatus = Ndis802_11Encryption2Enabled;
    EXPECT_FALSE(settingsFit(settings, pskNetwork()));
    settings = pskSettings();
    settings.authenticationMode = Ndis802_11AuthModeWPA;
    EXPECT_FALSE(settingsFit(settings, pskNetwork()));
    settings = pskSettings();
    settings.wpaKey->back() ^= 1;
    EXPECT_FALSE(settingsFit(settings, pskNetwork()));
    settings = pskSettings();
    settings.adHocWpaKey.swap(settings.wpaKey); // set by the wrong request
    EXPECT_FALSE(settingsFit(settings, pskNetwork()));
}

TEST(JoinRules, EnterpriseNetworksCannotBeJoined)
{
    ScenarioNetwork network = pskNetwork();
    network.security = Security::WpaEnterprise;
    CardSettings settings = pskSettings();
    settings.authenticationMode = Ndis802_11AuthModeWPA;
    EXPECT_FALSE(settingsFit(settings, network));
}

TEST(JoinRules, CreatedNetworkFollowsTheSettings)
{
    CardSettings settings = wepSettings();
    EXPECT_FALSE(createdAdHocNetwork(settings));
    settings.infrastructureMode = Ndis802_11IBSS;
    settings.configuration.DSConfig = 2462000;
    const auto created = createdAdHocNetwork(settings);
    ASSERT_TRUE(created);
    EXPECT_TRUE(created->adHoc);
    EXPECT_EQ(created->channel, 11);
    EXPECT_EQ(created->security, Security::Wep);
    EXPECT_EQ(created->wepKeys[0], "key-0");

    settings.transmitKeyIndex.reset();
    EXPECT_FALSE(createdAdHocNetwork(settings));
    settings.encryptionStatus = Ndis802_11Encryption2Enabled;
    settings.authenticationMode = Ndis802_11AuthModeWPANone;
    EXPECT_FALSE(createdAdHocNetwork(settings)); // no key yet
    settings.adHocWpaKey.emplace().fill(1);
    EXPECT_EQ(createdAdHocNetwork(settings)->security, Security::WpaNone);
}
