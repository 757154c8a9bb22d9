#pragma once

#include "driver/records/NdisRecords.h"
#include "services/card/CardSettings.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// A scenario file describes a card and the networks around it (docs/scenario.md).

inline constexpr std::size_t maxSsidBytes = 32;
inline constexpr std::size_t minPassphraseBytes = 8;
inline constexpr std::size_t maxPassphraseBytes = 63;

enum class Security {
    Open,
    Wep, // 40 or 104 bits, depending on the key length
    WpaPsk,
    WpaNone,
    WpaEnterprise, // 802.1X: listed, but cannot be joined
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
    std::int32_t driftDb { 0 }; // maximum deviation from signalDbm
    bool hidden { false };
    bool adHoc { false };
    Security security { Security::Open };
    Cipher cipher { Cipher::Tkip }; // WPA kinds
    bool sharedKeyAuthentication { false }; // WEP
    std::array<std::string, 4> wepKeys; // bytes, each 0, 5 or 13 long
    std::int32_t transmitKeyIndex { 0 }; // WEP: the key that the network transmits with, 0 to 3
    std::string passphrase; // WPA-PSK and WPA-None: 8 to 63 characters; empty if presharedKey is set
    std::optional<PresharedKey> presharedKey;
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
    std::uint32_t line { 0 }; // 1-based; 0 if the position is unknown
    std::uint32_t column { 0 };
};

struct ScenarioResult {
    std::optional<Scenario> scenario; // std::nullopt on failure
    ScenarioError error;
};

[[nodiscard]] ScenarioResult parseScenario(std::string_view toml);
[[nodiscard]] ScenarioResult loadScenario(const std::string& path);

// Parses the keys of one network table, for a network that is added while the simulator runs.
[[nodiscard]] ScenarioResult parseScenarioNetwork(std::string_view toml);
