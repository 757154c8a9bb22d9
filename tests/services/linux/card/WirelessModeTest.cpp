#include "services/linux/card/WirelessMode.h"

#include "tests/services/linux/card/CardUnderTest.h"

#include <gtest/gtest.h>

namespace {

SetRates ratesFor(std::uint32_t mode, const NDIS_802_11_RATES& desired)
{
    CardSettings settings;
    settings.phyMode = mode;
    settings.desiredRates = desired;
    return allowedRates(settings, dualBandWiphy());
}

constexpr NDIS_802_11_RATES automatic { 108, 96, 72, 48, 22, 11, 4, 2 };
using Rates = std::vector<std::uint8_t>;

} // namespace

TEST(WirelessMode, AllowsItsBands)
{
    EXPECT_TRUE(modeAllows(wirelessModeBG, 2412));
    EXPECT_FALSE(modeAllows(wirelessModeBG, 5180));
    EXPECT_FALSE(modeAllows(wirelessModeB, 5180));
    EXPECT_FALSE(modeAllows(wirelessModeA, 2412));
    EXPECT_TRUE(modeAllows(wirelessModeA, 5180));
    EXPECT_TRUE(modeAllows(wirelessModeABG, 2412));
    EXPECT_TRUE(modeAllows(wirelessModeABG, 5180));
}

TEST(WirelessMode, AutomaticRatesAreNotLimited)
{
    const SetRates rates = ratesFor(wirelessModeABG, automatic);
    EXPECT_EQ(rates.twoGhz, Rates {});
    EXPECT_EQ(rates.fiveGhz, Rates {});
}

TEST(WirelessMode, ModeBHasFourRates)
{
    EXPECT_EQ(ratesFor(wirelessModeB, { 22, 11, 4, 2 }).twoGhz, (Rates { 2, 4, 11, 22 }));
}

TEST(WirelessMode, SingleRateIsUsedWhereTheBandHasIt)
{
    const SetRates both = ratesFor(wirelessModeABG, { 108 });
    EXPECT_EQ(both.twoGhz, (Rates { 108 }));
    EXPECT_EQ(both.fiveGhz, (Rates { 108 }));
    const SetRates low = ratesFor(wirelessModeABG, { 0x80 | 11 });
    EXPECT_EQ(low.twoGhz, (Rates { 11 }));
    EXPECT_EQ(low.fiveGhz, Rates {});
}

TEST(WirelessMode, BandThatTheDeviceLacksHasNoRates)
{
    WiphyFacts wiphy = dualBandWiphy();
    wiphy.fiveGhzRates.clear();
    for (const NDIS_802_11_RATES& desired : { automatic, NDIS_802_11_RATES { 108 } }) {
        CardSettings settings;
        settings.desiredRates = desired;
        EXPECT_FALSE(allowedRates(settings, wiphy).fiveGhz);
        EXPECT_TRUE(allowedRates(settings, wiphy).twoGhz);
    }
}

TEST(WirelessMode, OldModesAndSingleRatesDoWithoutNewerRates)
{
    CardSettings settings;
    settings.phyMode = wirelessModeBG;
    EXPECT_FALSE(isLegacyOnly(settings));
    settings.phyMode = wirelessModeB;
    EXPECT_TRUE(isLegacyOnly(settings));
    settings.phyMode = wirelessModeBG;
    settings.desiredRates = { 108 };
    EXPECT_TRUE(isLegacyOnly(settings));
}

TEST(TransmitPower, IsAShareOfTheMaximumInWholeDecibels)
{
    EXPECT_FALSE(transmitPower(100, 2000).mbm);
    EXPECT_EQ(transmitPower(75, 2000).mbm, 1900);
    EXPECT_EQ(transmitPower(50, 2000).mbm, 1700);
    EXPECT_EQ(transmitPower(25, 2000).mbm, 1400);
    EXPECT_EQ(transmitPower(12, 2000).mbm, 1100);
    EXPECT_EQ(transmitPower(12, 500).mbm, 0);
    EXPECT_FALSE(transmitPower(50, 0).mbm);
}

TEST(NetworkType, DependsOnBandAndRates)
{
    EXPECT_EQ(networkTypeOf(2412, Octets { 0x82, 0x84, 0x0B, 0x16 }), std::uint32_t { Ndis802_11DS });
    EXPECT_EQ(networkTypeOf(2412, Octets { 0x82, 0x6C }), std::uint32_t { Ndis802_11OFDM24 });
    EXPECT_EQ(networkTypeOf(5180, Octets { 0x8C }), std::uint32_t { Ndis802_11OFDM5 });
}
