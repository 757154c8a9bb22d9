#include "advanced/RateRules.h"

#include "app/shared/Trace.h"
#include "platform/AssertionHandler.h"

#include <array>
#include <cstddef>
#include <span>

namespace {

// Line numbers in the reports of failed assertions.
constexpr int unknownModeLine = 121;
constexpr int unknownRateLine = 129;
constexpr int unknownModeForAutoLine = 135;
constexpr int unknownOfdmRateLine = 287;

struct Rate {
    const char* text;
    std::uint8_t code; // units of 500 kbit/s
};

constexpr std::array<Rate, 12> mixedRates { {
    { "1 Mbps", 2 },
    { "2 Mbps", 4 },
    { "5.5 Mbps", 11 },
    { "11 Mbps", 22 },
    { "6 Mbps", 12 },
    { "9 Mbps", 18 },
    { "12 Mbps", 24 },
    { "18 Mbps", 36 },
    { "24 Mbps", 48 },
    { "36 Mbps", 72 },
    { "48 Mbps", 96 },
    { "54 Mbps", 108 },
} };

// The first two deliberately have no unit in this list.
constexpr std::array<Rate, 4> cckRates { {
    { "1", 2 },
    { "2", 4 },
    { "5.5 Mbps", 11 },
    { "11 Mbps", 22 },
} };

// The OFDM rates are at the end of the mixed list.
constexpr std::span<const Rate> ofdmRates = std::span(mixedRates).last<8>();

constexpr NDIS_802_11_RATES cckAuto { 22, 11, 4, 2, 0, 0, 0, 0 };
constexpr NDIS_802_11_RATES ofdmAuto { 108, 96, 72, 48, 36, 24, 18, 12 };
// The record has space for eight rates, so the four slowest OFDM rates are omitted.
constexpr NDIS_802_11_RATES mixedAuto { 108, 96, 72, 48, 22, 11, 4, 2 };

std::span<const Rate> ratesOf(std::int32_t wirelessMode)
{
    switch (wirelessMode) {
    case cckOnlyMode:
        return cckRates;
    case ofdmOnlyMode:
        return ofdmRates;
    default:
        return mixedRates;
    }
}

bool hasMixedRates(std::int32_t wirelessMode)
{
    return wirelessMode != cckOnlyMode && wirelessMode != ofdmOnlyMode;
}

// Reports an unknown value. Returns whether to continue.
bool reportUnknown(AssertionHandler& assertions, int lineNumber, const char* error)
{
    const bool goOn = assertions.handleFailureInMethod(
        "OnApply", "AdvancePageController", "AdvancePageController", lineNumber, invalidParameter);
    if (goOn)
        traceAlways("%s", error);
    return goOn;
}

bool isRateIndex(std::span<const Rate> rates, std::int32_t index)
{
    return index >= 1 && static_cast<std::size_t>(index) <= rates.size();
}

NDIS_802_11_RATES fixedRate(std::span<const Rate> rates, std::int32_t index)
{
    return { rates[static_cast<std::size_t>(index) - 1].code };
}

std::optional<NDIS_802_11_RATES> automaticRates(std::int32_t wirelessMode, AssertionHandler& assertions)
{
    if (wirelessMode == cckOnlyMode)
        return cckAuto;
    if (!isKnownMode(wirelessMode) && !reportUnknown(assertions, unknownModeForAutoLine, "PhyMode ERROR"))
        return std::nullopt;
    return mixedAuto;
}

} // namespace

bool isKnownMode(std::int32_t wirelessMode)
{
    return wirelessMode >= 0 && wirelessMode <= 3;
}

std::vector<QString> transmitRateItems(std::int32_t wirelessMode)
{
    std::vector<QString> items { QStringLiteral("Auto") };
    for (const Rate& rate : ratesOf(wirelessMode))
        items.push_back(QString::fromLatin1(rate.text));
    return items;
}

std::int32_t transmitRateIndexFor(std::int32_t wirelessMode, std::int32_t index)
{
    return !hasMixedRates(wirelessMode) && index > static_cast<std::int32_t>(ratesOf(wirelessMode).size()) ? 0 : index;
}

bool modeHasProtection(std::int32_t wirelessMode)
{
    return hasMixedRates(wirelessMode);
}

std::optional<NDIS_802_11_RATES> desiredRates(
    std::int32_t wirelessMode, std::int32_t rateIndex, AssertionHandler& assertions)
{
    if (wirelessMode == ofdmOnlyMode) {
        if (isRateIndex(ofdmRates, rateIndex))
            return fixedRate(ofdmRates, rateIndex);
        if (rateIndex != 0 && !reportUnknown(assertions, unknownOfdmRateLine, "Rates ERROR"))
            return std::nullopt;
        return ofdmAuto;
    }
    if (!isKnownMode(wirelessMode) && !reportUnknown(assertions, unknownModeLine, "PhyMode ERROR"))
        return std::nullopt;
    if (isRateIndex(mixedRates, rateIndex))
        return fixedRate(mixedRates, rateIndex);
    if (rateIndex != 0 && !reportUnknown(assertions, unknownRateLine, "Rates ERROR"))
        return std::nullopt;
    return automaticRates(wirelessMode, assertions);
}
