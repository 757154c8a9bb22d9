#include "services/linux/card/WirelessMode.h"

#include "services/linux/card/NetworkList.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr std::uint8_t rateMask = 0x7F;
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

std::vector<std::uint8_t> only(std::uint8_t rate, const std::vector<std::uint8_t>& offered)
{
    const bool isOffered = std::find(offered.begin(), offered.end(), rate) != offered.end();
    return isOffered ? std::vector { rate } : std::vector<std::uint8_t> {};
}

} // namespace

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
    if (const auto rate = singleRate(settings.desiredRates))
        return { only(*rate, wiphy.twoGhzRates), only(*rate, wiphy.fiveGhzRates) };
    SetRates rates;
    if (settings.phyMode == wirelessModeB) {
        std::copy_if(wiphy.twoGhzRates.begin(), wiphy.twoGhzRates.end(), std::back_inserter(rates.twoGhz),
            [](std::uint8_t rate) { return std::find(cckRates.begin(), cckRates.end(), rate) != cckRates.end(); });
    }
    return rates;
}

SetTransmitPower transmitPower(std::uint32_t percent, std::int32_t maxPowerMbm)
{
    constexpr double mbmPerDecade = 1000;
    if (percent >= 100 || maxPowerMbm <= 0)
        return {};
    const double reduction = mbmPerDecade * std::log10(static_cast<double>(percent) / 100);
    return { std::max(0, maxPowerMbm + static_cast<std::int32_t>(std::lround(reduction))) };
}
