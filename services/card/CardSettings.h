#pragma once

#include "driver/records/NdisRecords.h"
#include "driver/records/VxRecords.h"
#include "posix/SecureMemory.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

inline constexpr std::size_t wep40KeyBytes = 5;
inline constexpr std::size_t wep104KeyBytes = 13;
inline constexpr std::size_t presharedKeyBytes = 32;

using WepKeyBytes = SecretVector<std::uint8_t>;
using PresharedKey = SecretArray<std::uint8_t, presharedKeyBytes>;

// The settings that the client has sent; the initial values are those after power-up.
struct CardSettings {
    std::int32_t infrastructureMode { Ndis802_11Infrastructure };
    std::int32_t authenticationMode { Ndis802_11AuthModeOpen };
    std::int32_t encryptionStatus { Ndis802_11EncryptionDisabled };
    std::array<WepKeyBytes, 4> wepKeys; // empty if the index has no key
    std::optional<std::size_t> transmitKeyIndex;
    std::optional<PresharedKey> wpaKey; // for WPA-PSK
    std::optional<PresharedKey> adHocWpaKey; // for WPA-None
    std::uint32_t preamble { 0 };
    std::uint32_t rtsThresholdBytes { 2347 };
    std::uint32_t fragmentationThresholdBytes { 2346 }; // 0: never
    std::uint32_t transmitPowerPercent { 100 };
    std::uint32_t powerMode { 0 };
    std::uint32_t phyMode { 0 };
    NDIS_802_11_RATES desiredRates { 108, 96, 72, 48, 22, 11, 4, 2 };
    NDIS_802_11_CONFIGURATION configuration { sizeof(NDIS_802_11_CONFIGURATION), 100, 0, 2412000,
        { sizeof(NDIS_802_11_CONFIGURATION_FH), 0, 0, 0 } };
    VX_802_11_STA_CONFIG stationConfig {}; // the fields that can be set
    bool radioOn { true }; // the software switch
};

// OID_802_11_ADD_KEY, VX_OID_802_11_ADD_WPA and OID_802_11_REMOVE_KEY, with the records of NdisRecords.h. Length must
// be the size of the request; a WEP key has 5 or 13 bytes and a pre-shared key 32. Any other record is refused and
// changes nothing.
[[nodiscard]] bool addKey(CardSettings& settings, std::span<const std::byte> record);
[[nodiscard]] bool addWpaKey(CardSettings& settings, std::span<const std::byte> record);
[[nodiscard]] bool removeKey(CardSettings& settings, std::span<const std::byte> record);
