#include "services/simulator/card/LinkModel.h"

#include "services/simulator/card/Beacon.h"
#include "services/simulator/card/Neighbourhood.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::uint8_t rateMask = 0x7F; // bit 7 marks a basic rate

struct RateStep {
    std::uint8_t rate; // units of 500 kbit/s
    std::int32_t minSignalDbm; // typical receiver sensitivity plus a margin
};

constexpr std::array<RateStep, 12> rateSteps { {
    { 108, -66 },
    { 96, -69 },
    { 72, -73 },
    { 48, -77 },
    { 36, -80 },
    { 24, -83 },
    { 22, -84 },
    { 18, -85 },
    { 12, -87 },
    { 11, -88 },
    { 4, -90 },
    { 2, -95 },
} };

std::int32_t minSignalFor(std::uint8_t rate)
{
    for (const RateStep& step : rateSteps) {
        if (step.rate <= rate)
            return step.minSignalDbm;
    }
    return rateSteps.back().minSignalDbm;
}

std::vector<std::uint8_t> allowedRates(const ScenarioNetwork& network, const NDIS_802_11_RATES& desiredRates)
{
    const std::vector<std::uint8_t> offered = supportedRates(network);
    std::vector<std::uint8_t> allowed;
    std::copy_if(offered.begin(), offered.end(), std::back_inserter(allowed), [&desiredRates](std::uint8_t rate) {
        return std::any_of(desiredRates.begin(), desiredRates.end(),
            [rate](std::uint8_t desired) { return (desired & rateMask) == rate; });
    });
    return allowed.empty() ? offered : allowed;
}

} // namespace

std::uint32_t linkRate(const ScenarioNetwork& network, const NDIS_802_11_RATES& desiredRates, std::int32_t signalDbm)
{
    const std::vector<std::uint8_t> allowed = allowedRates(network, desiredRates);
    std::uint8_t best = *std::min_element(allowed.begin(), allowed.end());
    for (const std::uint8_t rate : allowed) {
        if (rate > best && signalDbm >= minSignalFor(rate))
            best = rate;
    }
    return best;
}

std::uint32_t channelQuality(std::int32_t signalDbm)
{
    return static_cast<std::uint32_t>(std::clamp(2 * (signalDbm - Neighbourhood::minSignalDbm), 0, 100));
}

double retryShare(std::int32_t signalDbm)
{
    return std::clamp((-55.0 - signalDbm) / 100.0, 0.005, 0.4);
}
