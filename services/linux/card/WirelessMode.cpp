#include "services/linux/card/WirelessMode.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr std::uint8_t rateMask = 0x7F;
// The rates of 802.11b in units of 500 kbit/s: 1, 2, 5.5 and 11 Mbit/s.
constexpr std::array<std::uint8_t, 4> cckRates { 2, 4, 11, 22 };

std::optional<std::uint8_t> singleRate(const NDIS_802_11_RATES& rates)
{
    std::optional<std::uint8_t> single;
    for (const std::uint8_t rate : rates) {
        if (rate == 0)
            continue;
        if (single)
            return std::nullopt;
        single = static_cast<std::uint8_t>(rate & rateMask);
    }
    return single;
}

using Rates = std::vector<std::uint8_t>;

// The allowed ones of the rates that a band offers; std::nullopt for a band that offers none.
template <typename IsAllowed> std::optional<Rates> allowedOf(const Rates& offered, IsAllowed isAllowed)
{
    if (offered.empty())
        return std::nullopt;
    Rates allowed;
    std::copy_if(offered.begin(), offered.end(), std::back_inserter(allowed), isAllowed);
    return allowed;
}

bool isCck(std::uint8_t rate)
{
    return std::find(cckRates.begin(), cckRates.end(), rate) != cckRates.end();
}

} // namespace

std::uint32_t networkTypeOf(std::uint32_t frequencyMhz, OctetSpan rates)
{
    if (frequencyMhz >= firstFiveGhzMhz)
        return Ndis802_11OFDM5;
    const bool isOnlyCck = std::all_of(rates.begin(), rates.end(),
        [](std::uint8_t rate) { return isCck(static_cast<std::uint8_t>(rate & rateMask)); });
    return isOnlyCck ? Ndis802_11DS : Ndis802_11OFDM24;
}

bool modeAllows(std::uint32_t mode, std::uint32_t frequencyMhz)
{
    const bool isFiveGhz = frequencyMhz >= firstFiveGhzMhz;
    switch (mode) {
    case wirelessModeA:
        return isFiveGhz;
    case wirelessModeABG:
        return true;
    default:
        return !isFiveGhz;
    }
}

bool isLegacyOnly(const CardSettings& settings)
{
    return settings.phyMode == wirelessModeB || singleRate(settings.desiredRates);
}

SetRates allowedRates(const CardSettings& settings, const WiphyFacts& wiphy)
{
    // An empty list does not limit a band.
    const auto none = [](std::uint8_t) { return false; };
    if (const auto single = singleRate(settings.desiredRates)) {
        const auto isSingle = [single](std::uint8_t rate) { return rate == *single; };
        return { allowedOf(wiphy.twoGhzRates, isSingle), allowedOf(wiphy.fiveGhzRates, isSingle), wiphy.twoGhzNewer,
            wiphy.fiveGhzNewer };
    }
    const bool isModeB = settings.phyMode == wirelessModeB;
    return { isModeB ? allowedOf(wiphy.twoGhzRates, isCck) : allowedOf(wiphy.twoGhzRates, none),
        allowedOf(wiphy.fiveGhzRates, none), wiphy.twoGhzNewer, wiphy.fiveGhzNewer };
}

SetTransmitPower transmitPower(std::uint32_t percent, std::int32_t maxPowerMbm)
{
    constexpr double dbPerDecade = 10;
    constexpr std::int32_t mbmPerDb = 100;
    if (percent >= 100 || maxPowerMbm <= 0)
        return {};
    const double dbm
        = static_cast<double>(maxPowerMbm) / mbmPerDb + dbPerDecade * std::log10(static_cast<double>(percent) / 100);
    // The kernel's own 802.11 stack takes whole decibels only.
    return { std::max(0, static_cast<std::int32_t>(std::lround(dbm)) * mbmPerDb) };
}
