#include "services/linux/supplicant/NetworkSettings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

namespace {

std::optional<std::string> valueIn(const std::vector<NetworkSetting>& settings, const std::string& name)
{
    const auto found = std::find_if(
        settings.begin(), settings.end(), [&name](const NetworkSetting& setting) { return setting.name == name; });
    return found == settings.end() ? std::nullopt : std::optional(std::string(found->value.view()));
}

NetworkBlock open()
{
    NetworkBlock block;
    block.ssid = { 'c', 0xFF, 0x00 };
    return block;
}

} // namespace

TEST(NetworkSettings, NamesAreHexadecimal)
{
    EXPECT_EQ(valueIn(networkSettings(open()), "ssid"), "63ff00");
    EXPECT_EQ(valueIn(networkSettings(open()), "key_mgmt"), "NONE");
}

TEST(NetworkSettings, NetworkByAddressNeedsNoName)
{
    NetworkBlock block;
    block.bssid = MacAddress { 2, 0, 0, 0, 0xA0, 1 };
    EXPECT_FALSE(valueIn(networkSettings(block), "ssid"));
    EXPECT_EQ(valueIn(networkSettings(block), "bssid"), "02:00:00:00:a0:01");
}

TEST(NetworkSettings, WepHasItsKeysAndAlgorithm)
{
    NetworkBlock block = open();
    block.security = BlockSecurity::Wep;
    block.wepKeys[2] = { 'a', 'b', 'c', 'd', 'e' };
    block.transmitKeyIndex = 2;
    EXPECT_EQ(valueIn(networkSettings(block), "wep_key2"), "6162636465");
    EXPECT_FALSE(valueIn(networkSettings(block), "wep_key0"));
    EXPECT_EQ(valueIn(networkSettings(block), "wep_tx_keyidx"), "2");
    EXPECT_EQ(valueIn(networkSettings(block), "auth_alg"), "OPEN");
    block.sharedKeyAuthentication = true;
    EXPECT_EQ(valueIn(networkSettings(block), "auth_alg"), "SHARED");
}

TEST(NetworkSettings, PresharedKeyJoinsBothGenerationsOfWpa)
{
    NetworkBlock block = open();
    block.security = BlockSecurity::WpaPsk;
    block.presharedKey.fill(0xAB);
    block.pairwise = { CipherSuite::Tkip, CipherSuite::Gcmp256 };
    const auto settings = networkSettings(block);
    std::string hex;
    for (int i = 0; i < 32; ++i)
        hex += "ab";
    EXPECT_EQ(valueIn(settings, "psk"), hex);
    EXPECT_EQ(valueIn(settings, "proto"), "WPA RSN");
    EXPECT_EQ(valueIn(settings, "pairwise"), "TKIP GCMP-256");
    EXPECT_EQ(valueIn(settings, "ieee80211w"), "1");
    // Names that the supplicant has no word for.
    block.pairwise = { CipherSuite::Unknown };
    EXPECT_EQ(valueIn(networkSettings(block), "pairwise"), "CCMP TKIP");
}

TEST(NetworkSettings, FrequenciesNarrowTheSearch)
{
    NetworkBlock block = open();
    EXPECT_FALSE(valueIn(networkSettings(block), "scan_freq"));
    block.allowedMhz = { 2412, 5180 };
    EXPECT_EQ(valueIn(networkSettings(block), "scan_freq"), "2412 5180");
    block.scanMhz = { 5180 };
    EXPECT_EQ(valueIn(networkSettings(block), "scan_freq"), "5180");
    EXPECT_EQ(valueIn(networkSettings(block), "freq_list"), "2412 5180");
}

TEST(NetworkSettings, AdHocAndHiddenAndLegacy)
{
    NetworkBlock block = open();
    block.asksByName = true;
    EXPECT_EQ(valueIn(networkSettings(block), "scan_ssid"), "1");
    EXPECT_FALSE(valueIn(networkSettings(block), "mode"));
    block.isAdHoc = true;
    block.adHocMhz = 2437;
    block.isLegacyOnly = true;
    EXPECT_EQ(valueIn(networkSettings(block), "mode"), "1");
    EXPECT_EQ(valueIn(networkSettings(block), "frequency"), "2437");
    EXPECT_EQ(valueIn(networkSettings(block), "disable_ht"), "1");
}

TEST(NetworkSettings, FastTransitionIsAskedForIfTheSupplicantKnowsIt)
{
    NetworkBlock block = open();
    block.security = BlockSecurity::WpaPsk;
    const auto fast = [&block] {
        const auto settings = networkSettings(block);
        return std::count_if(settings.begin(), settings.end(), [](const NetworkSetting& setting) {
            return setting.name == "key_mgmt" && setting.value.view().ends_with("FT-PSK") && setting.isOptional;
        });
    };
    EXPECT_EQ(fast(), 0);
    block.needsFastTransition = true;
    EXPECT_EQ(fast(), 1);
    EXPECT_EQ(valueIn(networkSettings(block), "key_mgmt"), "WPA-PSK WPA-PSK-SHA256");
}
