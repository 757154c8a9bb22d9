#include "services/simulator/scenario/Scenario.h"

#include "tests/services/simulator/scenario/ScenarioTexts.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>

#include <unistd.h>

namespace {

ScenarioNetwork networkOf(const std::string& toml)
{
    const ScenarioResult result = parseScenarioNetwork(toml);
    EXPECT_TRUE(result.scenario.has_value()) << result.error.text;
    if (!result.scenario || result.scenario->networks.size() != 1)
        return {};
    return result.scenario->networks.front();
}

const std::string wpaNone = named + "mode = \"ad-hoc\"\nsecurity = \"wpa-none\"\n";

TEST(Scenario, MayBeEmpty)
{
    const ScenarioResult result = parseScenario("");
    ASSERT_TRUE(result.scenario.has_value());
    EXPECT_TRUE(result.scenario->networks.empty());
    EXPECT_TRUE(result.error.text.empty());
}

TEST(Scenario, HasACardWithDefaults)
{
    const auto scenario = parseScenario("[card]\n").scenario;
    ASSERT_TRUE(scenario.has_value());
    EXPECT_EQ(scenario->card.address, (MacAddress { 0x02, 0x51, 0x56, 0x00, 0x00, 0x01 }));
    EXPECT_EQ(scenario->card.eepromMajor, 0);
    EXPECT_EQ(scenario->card.eepromMinor, 0);
    EXPECT_FALSE(scenario->card.eepromError);
    EXPECT_TRUE(scenario->card.supportsFiveGhz);
    EXPECT_TRUE(scenario->card.hardwareRadioOn);
}

TEST(Scenario, ReadsEveryKeyOfTheCard)
{
    const auto scenario = parseScenario(R"([card]
address = "00:1a:2B:3c:4D:5e"
eeprom_major = 255
eeprom_minor = 7
eeprom_error = true
supports_five_ghz = false
hardware_radio_on = false
)")
                              .scenario;
    ASSERT_TRUE(scenario.has_value());
    EXPECT_EQ(scenario->card.address, (MacAddress { 0x00, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E }));
    EXPECT_EQ(scenario->card.eepromMajor, 255);
    EXPECT_EQ(scenario->card.eepromMinor, 7);
    EXPECT_TRUE(scenario->card.eepromError);
    EXPECT_FALSE(scenario->card.supportsFiveGhz);
    EXPECT_FALSE(scenario->card.hardwareRadioOn);
}

TEST(Scenario, KeepsTheOrderOfNetworks)
{
    const auto scenario = parseScenario(R"(
[[network]]
ssid = "b"
bssid = "0A-00-00-00-00-02"
[[network]]
ssid = "a"
bssid = "0A-00-00-00-00-01"
[[network]]
ssid = "b"
bssid = "0A-00-00-00-00-03"
)")
                              .scenario;
    ASSERT_TRUE(scenario.has_value());
    ASSERT_EQ(scenario->networks.size(), 3u);
    EXPECT_EQ(scenario->networks[0].ssid, "b");
    EXPECT_EQ(scenario->networks[1].ssid, "a");
    EXPECT_EQ(scenario->networks[2].bssid[5], 3);
}

TEST(Scenario, AcceptsNetworksAsAnInlineArray)
{
    const auto scenario = parseScenario(R"(network = [{ ssid = "a", bssid = "0A-00-00-00-00-01" }])").scenario;
    ASSERT_TRUE(scenario.has_value());
    EXPECT_EQ(scenario->networks.size(), 1u);
}

TEST(ScenarioNetwork, NeedsOnlyANameAndAnAddress)
{
    const ScenarioNetwork network = networkOf(named);
    EXPECT_EQ(network.ssid, "Quay");
    EXPECT_EQ(network.bssid, (MacAddress { 0x0A, 0, 0, 0, 0, 1 }));
    EXPECT_EQ(network.channel, 1);
    EXPECT_EQ(network.signalDbm, -60);
    EXPECT_EQ(network.driftDb, 0);
    EXPECT_FALSE(network.hidden);
    EXPECT_FALSE(network.adHoc);
    EXPECT_EQ(network.security, Security::Open);
}

TEST(ScenarioNetwork, ReadsChannelSignalAndMode)
{
    const ScenarioNetwork network
        = networkOf(named + "channel = 161\nsignal_dbm = -10\ndrift_db = 20\nhidden = true\nmode = \"ad-hoc\"\n");
    EXPECT_EQ(network.channel, 161);
    EXPECT_EQ(network.signalDbm, -10);
    EXPECT_EQ(network.driftDb, 20);
    EXPECT_TRUE(network.hidden);
    EXPECT_TRUE(network.adHoc);
    EXPECT_EQ(networkOf(named + "signal_dbm = -100\ndrift_db = 0\nmode = \"infrastructure\"\n").signalDbm, -100);
}

TEST(ScenarioNetwork, ReadsNamesAsTextOrBytes)
{
    const std::string address = "bssid = \"0A-00-00-00-00-01\"\n";
    EXPECT_EQ(networkOf(address + "ssid = \"F\xC3\xA4hre\"\n").ssid, "F\xC3\xA4hre");
    EXPECT_EQ(networkOf(address + "ssid_hex = \"436166e9\"\n").ssid, "Caf\xE9");
    EXPECT_EQ(networkOf(address + "ssid_hex = \"410042\"\n").ssid, std::string("A\0B", 3));
    EXPECT_EQ(networkOf(address + "ssid = \"" + std::string(32, 'n') + "\"\n").ssid, std::string(32, 'n'));
    EXPECT_EQ(networkOf(address + "ssid_hex = \"" + std::string(64, 'F') + "\"\n").ssid, std::string(32, '\xFF'));
}

TEST(ScenarioNetwork, ReadsWepKeysAsTextOrDigits)
{
    const ScenarioNetwork network
        = networkOf(wep + "key_1 = \"pearl\"\nkey_2_hex = \"00ff10Ab7f\"\nkey_4 = \"a b c\"\n");
    EXPECT_EQ(network.security, Security::Wep);
    EXPECT_EQ(network.wepKeys[0], "pearl");
    EXPECT_EQ(network.wepKeys[1], std::string("\x00\xFF\x10\xAB\x7F", 5));
    EXPECT_EQ(network.wepKeys[2], "");
    EXPECT_EQ(network.wepKeys[3], "a b c");
    EXPECT_EQ(network.transmitKeyIndex, 0);
    EXPECT_FALSE(network.sharedKeyAuthentication);
}

TEST(ScenarioNetwork, ReadsTheTransmitKey)
{
    for (int key = 1; key <= 4; ++key) {
        const std::string number = std::to_string(key);
        const ScenarioNetwork network
            = networkOf(wep + "key_" + number + " = \"lighthousekey\"\ntransmit_key = " + number + "\n");
        EXPECT_EQ(network.transmitKeyIndex, key - 1);
        EXPECT_EQ(network.wepKeys[static_cast<std::size_t>(key - 1)], "lighthousekey");
    }
}

TEST(ScenarioNetwork, ReadsOpenAndSharedKeyAuthentication)
{
    EXPECT_TRUE(networkOf(wep + "key_1 = \"pearl\"\nauthentication = \"shared\"\n").sharedKeyAuthentication);
    EXPECT_FALSE(networkOf(wep + "key_1 = \"pearl\"\nauthentication = \"open\"\n").sharedKeyAuthentication);
    EXPECT_TRUE(networkOf(wep + "mode = \"ad-hoc\"\nkey_1 = \"pearl\"\n").adHoc);
}

TEST(ScenarioNetwork, ReadsAPassphrase)
{
    const ScenarioNetwork network = networkOf(wpaPsk + "cipher = \"aes\"\npassphrase = \"anchor and chain\"\n");
    EXPECT_EQ(network.security, Security::WpaPsk);
    EXPECT_EQ(network.cipher, Cipher::Aes);
    EXPECT_EQ(network.passphrase, "anchor and chain");
    EXPECT_FALSE(network.presharedKey.has_value());
    EXPECT_EQ(networkOf(wpaPsk + "passphrase = \"12345678\"\n").passphrase, "12345678");
    EXPECT_EQ(networkOf(wpaPsk + "passphrase = \"12345678\"\n").cipher, Cipher::Tkip);
    EXPECT_EQ(networkOf(wpaPsk + "passphrase = '" + std::string(63, '~') + "'\n").passphrase, std::string(63, '~'));
}

TEST(ScenarioNetwork, ReadsAPresharedKey)
{
    const ScenarioNetwork network
        = networkOf(wpaPsk + "preshared_key_hex = \"00112233445566778899aabbccddeeff" + std::string(32, 'A') + "\"\n");
    ASSERT_TRUE(network.presharedKey.has_value());
    EXPECT_EQ((*network.presharedKey)[0], 0x00);
    EXPECT_EQ((*network.presharedKey)[15], 0xFF);
    EXPECT_EQ((*network.presharedKey)[31], 0xAA);
    EXPECT_TRUE(network.passphrase.empty());
}

TEST(ScenarioNetwork, ReadsWpaNoneOfAdHocNetworks)
{
    const ScenarioNetwork network = networkOf(wpaNone + "cipher = \"aes\"\npassphrase = \"paddle alone\"\n");
    EXPECT_EQ(network.security, Security::WpaNone);
    EXPECT_EQ(network.cipher, Cipher::Aes);
    EXPECT_TRUE(network.adHoc);
}

TEST(ScenarioNetwork, ReadsEnterpriseSecurityWithoutAKey)
{
    const ScenarioNetwork network = networkOf(named + "security = \"wpa-enterprise\"\ncipher = \"aes\"\n");
    EXPECT_EQ(network.security, Security::WpaEnterprise);
    EXPECT_EQ(network.cipher, Cipher::Aes);
}

class ScenarioFile : public testing::Test {
protected:
    void SetUp() override { std::filesystem::create_directory(folder); }
    void TearDown() override { std::filesystem::remove_all(folder); }

    std::string write(const std::string& text) const
    {
        std::ofstream(folder / "scenario.toml", std::ios::binary) << text;
        return folder / "scenario.toml";
    }

    std::filesystem::path folder
        = std::filesystem::temp_directory_path() / ("scenario-test-" + std::to_string(::getpid()));
};

TEST_F(ScenarioFile, IsReadWhole)
{
    const ScenarioResult result = loadScenario(write("[[network]]\n" + named));
    ASSERT_TRUE(result.scenario.has_value()) << result.error.text;
    EXPECT_EQ(result.scenario->networks.size(), 1u);
    EXPECT_TRUE(loadScenario(write("")).scenario.has_value());
}

TEST_F(ScenarioFile, ThatCannotBeReadIsAnError)
{
    for (const std::string& path : { std::string(folder / "missing.toml"), folder.string(), std::string() }) {
        const ScenarioResult result = loadScenario(path);
        EXPECT_FALSE(result.scenario.has_value()) << path;
        EXPECT_EQ(result.error.text, "cannot be read") << path;
        EXPECT_EQ(result.error.line, 0u) << path;
    }
}

TEST_F(ScenarioFile, IsLimitedTo1Mebibyte)
{
    const std::string comment = "#" + std::string((1U << 20) - 2, 'x') + "\n";
    EXPECT_TRUE(loadScenario(write(comment)).scenario.has_value());
    const ScenarioResult result = loadScenario(write(comment + "\n"));
    EXPECT_FALSE(result.scenario.has_value());
    EXPECT_EQ(result.error.text, "larger than 1 MiB");
    EXPECT_FALSE(loadScenario("/dev/zero").scenario.has_value());
}

} // namespace
