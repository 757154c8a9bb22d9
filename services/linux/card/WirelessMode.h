#pragma once

#include "services/card/CardSettings.h"
#include "services/linux/card/CardEffects.h"
#include "services/linux/wire/Nl80211Values.h"

#include <cstdint>

// The wireless modes of the driver interface.
enum WirelessMode : std::uint32_t {
    wirelessModeBG = 0,
    wirelessModeB = 1,
    wirelessModeA = 2,
    wirelessModeABG = 3,
};

inline constexpr std::uint32_t firstFiveGhzMhz = 4900;

// The network types of a frequency, as the driver interface counts them (Ndis802_11DS, …OFDM24, …OFDM5).
[[nodiscard]] std::uint32_t networkTypeOf(std::uint32_t frequencyMhz, OctetSpan rates);

[[nodiscard]] bool modeAllows(std::uint32_t mode, std::uint32_t frequencyMhz);

// True in mode 802.11b, and if a single rate is asked for: the rates of 802.11n and later are then not used.
[[nodiscard]] bool isLegacyOnly(const CardSettings& settings);

// The transmit rates that the mode and the desired rates allow. Several desired rates mean that the interface chooses
// among all rates of the mode; a single one, and nothing else, is used as long as the band has it.
[[nodiscard]] SetRates allowedRates(const CardSettings& settings, const WiphyFacts& wiphy);

// The limit for a percentage of the most power that the channel allows; no value for 100 percent, and for an unknown
// maximum.
[[nodiscard]] SetTransmitPower transmitPower(std::uint32_t percent, std::int32_t maxPowerMbm);
