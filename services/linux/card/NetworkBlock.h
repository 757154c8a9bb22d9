#pragma once

#include "services/card/CardSettings.h"
#include "services/linux/wire/SecurityElements.h"

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

enum class BlockSecurity {
    Open,
    Wep,
    WpaPsk,
};

// What the supplicant needs to know to join a network. Holds keys.
struct NetworkBlock {
    Octets ssid; // empty: any network, or the one with this address
    std::optional<MacAddress> bssid;
    bool isAdHoc { false };
    bool asksByName { false };
    BlockSecurity security { BlockSecurity::Open };
    bool sharedKeyAuthentication { false }; // WEP
    std::array<WepKeyBytes, 4> wepKeys;
    std::size_t transmitKeyIndex { 0 };
    PresharedKey presharedKey {};
    std::vector<CipherSuite> pairwise; // WPA-PSK
    bool needsFastTransition { false }; // WPA-PSK: an access point takes the key in no other way
    bool isLegacyOnly { false }; // without the rates of 802.11n and later
    std::vector<std::uint32_t> scanMhz; // where the network was last heard
    std::vector<std::uint32_t> allowedMhz;
    std::uint32_t adHocMhz { 0 }; // where to create an ad hoc network
};
