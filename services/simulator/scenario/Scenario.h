#pragma once

#include "driver/records/NdisRecords.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// What a scenario file describes (docs/scenario.md): a card and the networks around it.

enum class Security {
    Open,
    Wep, // 40 or 104 bits, by the length of the keys
    WpaPsk,
    WpaNone,
    WpaEnterprise, // 802.1X: seen in the list, never joined
};

enum class Cipher {
    Tkip,
    Aes,
};

struct ScenarioNetwork {
    std::string ssid; // bytes, 1 to 32
    MacAddress bssid {};
    std::int32_t channel { 1 }; // a channel of ChannelFreqTable
    std::int32_t signalDbm { -60 };
    std::int32_t driftDb { 0 }; // the signal wanders this far to either side
    bool hidden { false };
    bool adHoc { false };
    Security security { Security::Open };
    Cipher cipher { Cipher::Tkip }; // WPA kinds
    bool sharedKeyAuthentication { false }; // WEP kinds
    std::array<std::string, 4> wepKeys; // bytes, each 0, 5 or 13 long
    std::int32_t transmitKeyIndex { 0 }; // WEP kinds: the key that the network itself sends with, 0 to 3
    std::string passphrase; // WPA-PSK and WPA-None: 8 to 63 characters; empty when presharedKey is given
    std::optional<std::array<std::uint8_t, 32>> presharedKey;
};

struct ScenarioCard {
    MacAddress address { 0x02, 0x51, 0x56, 0x00, 0x00, 0x01 };
    std::uint8_t eepromMajor { 0 };
    std::uint8_t eepromMinor { 0 };
    bool eepromError { false };
    bool supportsFiveGhz { true };
    bool hardwareRadioOn { true };
};

struct Scenario {
    ScenarioCard card;
    std::vector<ScenarioNetwork> networks;
};

struct ScenarioError {
    std::string text;
    std::uint32_t line { 0 }; // 1-based; 0 when the place is not known
    std::uint32_t column { 0 };
};

struct ScenarioResult {
    std::optional<Scenario> scenario; // nothing on failure
    ScenarioError error;
};

[[nodiscard]] ScenarioResult parseScenario(std::string_view toml);
[[nodiscard]] ScenarioResult loadScenario(const std::string& path);

// One network table of a scenario, in the same words, for a network that comes up while the simulator runs.
[[nodiscard]] ScenarioResult parseScenarioNetwork(std::string_view toml);
