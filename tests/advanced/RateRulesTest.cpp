#include "advanced/RateRules.h"

#include "tests/support/RecordingAssertionHandler.h"
#include "tests/support/StandardErrorOf.h"

#include <gtest/gtest.h>

namespace {

using Items = std::vector<QString>;

NDIS_802_11_RATES ratesOf(std::int32_t wirelessMode, std::int32_t rateIndex)
{
    RecordingAssertionHandler assertions;
    const auto rates = desiredRates(wirelessMode, rateIndex, assertions);
    EXPECT_TRUE(assertions.failures.empty());
    return rates.value_or(NDIS_802_11_RATES {});
}

std::vector<int> linesReported(
    std::int32_t wirelessMode, std::int32_t rateIndex, std::optional<NDIS_802_11_RATES>& rates)
{
    RecordingAssertionHandler assertions;
    assertions.goOn = true;
    rates = desiredRates(wirelessMode, rateIndex, assertions);
    std::vector<int> lines;
    for (const auto& failure : assertions.failures) {
        EXPECT_EQ(failure.file, "AdvancePageController");
        EXPECT_EQ(failure.description, "Invalid parameter not satisfying: FALSE");
        lines.push_back(failure.lineNumber);
    }
    return lines;
}

TEST(TransmitRateItems, DependOnTheMode)
{
    const Items mixed { u"Auto"_qs, u"1 Mbps"_qs, u"2 Mbps"_qs, u"5.5 Mbps"_qs, u"11 Mbps"_qs, u"6 Mbps"_qs,
        u"9 Mbps"_qs, u"12 Mbps"_qs, u"18 Mbps"_qs, u"24 Mbps"_qs, u"36 Mbps"_qs, u"48 Mbps"_qs, u"54 Mbps"_qs };
    EXPECT_EQ(transmitRateItems(0), mixed);
    EXPECT_EQ(transmitRateItems(3), mixed);
    EXPECT_EQ(transmitRateItems(7), mixed);
    EXPECT_EQ(transmitRateItems(1), (Items { u"Auto"_qs, u"1"_qs, u"2"_qs, u"5.5 Mbps"_qs, u"11 Mbps"_qs }));
    EXPECT_EQ(transmitRateItems(2),
        (Items { u"Auto"_qs, u"6 Mbps"_qs, u"9 Mbps"_qs, u"12 Mbps"_qs, u"18 Mbps"_qs, u"24 Mbps"_qs, u"36 Mbps"_qs,
            u"48 Mbps"_qs, u"54 Mbps"_qs }));
}

TEST(TransmitRateIndex, FallsBackToAutoIfTheListIsTooShort)
{
    EXPECT_EQ(transmitRateIndexFor(1, 4), 4);
    EXPECT_EQ(transmitRateIndexFor(1, 7), 0);
    EXPECT_EQ(transmitRateIndexFor(2, 8), 8);
    EXPECT_EQ(transmitRateIndexFor(2, 10), 0);
    EXPECT_EQ(transmitRateIndexFor(0, 12), 12);
    EXPECT_EQ(transmitRateIndexFor(3, 99), 99);
}

TEST(ModeHasProtection, OnlyInMixedModes)
{
    EXPECT_TRUE(modeHasProtection(0));
    EXPECT_FALSE(modeHasProtection(1));
    EXPECT_FALSE(modeHasProtection(2));
    EXPECT_TRUE(modeHasProtection(3));
}

TEST(DesiredRates, AutoSendsTheListOfTheMode)
{
    EXPECT_EQ(ratesOf(0, 0), (NDIS_802_11_RATES { 108, 96, 72, 48, 22, 11, 4, 2 }));
    EXPECT_EQ(ratesOf(3, 0), (NDIS_802_11_RATES { 108, 96, 72, 48, 22, 11, 4, 2 }));
    EXPECT_EQ(ratesOf(1, 0), (NDIS_802_11_RATES { 22, 11, 4, 2, 0, 0, 0, 0 }));
    EXPECT_EQ(ratesOf(2, 0), (NDIS_802_11_RATES { 108, 96, 72, 48, 36, 24, 18, 12 }));
}

TEST(DesiredRates, FixedRateIsTheOnlyRate)
{
    const std::vector<std::uint8_t> mixed { 2, 4, 11, 22, 12, 18, 24, 36, 48, 72, 96, 108 };
    for (std::int32_t index = 1; index <= 12; ++index) {
        for (const std::int32_t mode : { 0, 1, 3 })
            EXPECT_EQ(ratesOf(mode, index), (NDIS_802_11_RATES { mixed[static_cast<std::size_t>(index) - 1] }));
    }
    const std::vector<std::uint8_t> ofdm { 12, 18, 24, 36, 48, 72, 96, 108 };
    for (std::int32_t index = 1; index <= 8; ++index)
        EXPECT_EQ(ratesOf(2, index), (NDIS_802_11_RATES { ofdm[static_cast<std::size_t>(index) - 1] }));
}

TEST(DesiredRates, UnknownIndexIsReportedAndTreatedAsAuto)
{
    std::optional<NDIS_802_11_RATES> rates;
    EXPECT_EQ(linesReported(2, 9, rates), (std::vector { 287 }));
    EXPECT_EQ(rates, (NDIS_802_11_RATES { 108, 96, 72, 48, 36, 24, 18, 12 }));
    EXPECT_EQ(linesReported(0, 13, rates), (std::vector { 129 }));
    EXPECT_EQ(rates, (NDIS_802_11_RATES { 108, 96, 72, 48, 22, 11, 4, 2 }));
    EXPECT_EQ(linesReported(1, -1, rates), (std::vector { 129 }));
    EXPECT_EQ(rates, (NDIS_802_11_RATES { 22, 11, 4, 2 }));
}

TEST(DesiredRates, UnknownModeIsReportedAndTreatedAsMixed)
{
    std::optional<NDIS_802_11_RATES> rates;
    EXPECT_EQ(linesReported(4, 3, rates), (std::vector { 121 }));
    EXPECT_EQ(rates, (NDIS_802_11_RATES { 11 }));
    EXPECT_EQ(linesReported(-1, 0, rates), (std::vector { 121, 135 }));
    EXPECT_EQ(rates, (NDIS_802_11_RATES { 108, 96, 72, 48, 22, 11, 4, 2 }));
    EXPECT_EQ(linesReported(9, 13, rates), (std::vector { 121, 129, 135 }));
}

TEST(DesiredRates, TraceAnErrorAfterEachAssertionThatContinues)
{
    const auto errorsOf = [](std::int32_t wirelessMode, std::int32_t rateIndex) {
        std::optional<NDIS_802_11_RATES> rates;
        return standardErrorOf([&] { (void)linesReported(wirelessMode, rateIndex, rates); });
    };
    EXPECT_EQ(errorsOf(0, 0), "");
    EXPECT_EQ(errorsOf(2, 9), "Rates ERROR");
    EXPECT_EQ(errorsOf(3, 13), "Rates ERROR");
    EXPECT_EQ(errorsOf(4, 1), "PhyMode ERROR");
    EXPECT_EQ(errorsOf(4, 0), "PhyMode ERRORPhyMode ERROR");
    EXPECT_EQ(errorsOf(4, -1), "PhyMode ERRORRates ERRORPhyMode ERROR");
}

TEST(DesiredRates, AreEmptyIfTheHandlerStops)
{
    RecordingAssertionHandler assertions;
    const std::string written = standardErrorOf([&] {
        EXPECT_FALSE(desiredRates(4, 0, assertions).has_value());
        EXPECT_FALSE(desiredRates(2, 9, assertions).has_value());
        EXPECT_FALSE(desiredRates(0, 13, assertions).has_value());
    });
    EXPECT_EQ(assertions.failures.size(), 3u);
    EXPECT_EQ(written, "");
}

} // namespace
