#include "services/simulator/card/LinkModel.h"

#include "tests/services/simulator/card/CardUnderTest.h"

#include <gtest/gtest.h>

namespace {

constexpr NDIS_802_11_RATES automatic { 108, 96, 72, 48, 22, 11, 4, 2 };

} // namespace

TEST(LinkModel, RateFallsWithTheSignal)
{
    const ScenarioNetwork network = openNetwork("cafe", 1);
    EXPECT_EQ(linkRate(network, automatic, -50), 108U);
    EXPECT_EQ(linkRate(network, automatic, -95), 2U);
    std::uint32_t last = 108;
    for (std::int32_t signal = -50; signal >= -95; --signal) {
        const std::uint32_t rate = linkRate(network, automatic, signal);
        EXPECT_LE(rate, last);
        last = rate;
    }
}

TEST(LinkModel, RateIsOfferedAndAllowed)
{
    ScenarioNetwork adHoc = openNetwork("old", 1);
    adHoc.adHoc = true;
    EXPECT_EQ(linkRate(adHoc, automatic, -40), 22U);
    EXPECT_EQ(linkRate(openNetwork("cafe", 1), { 36 }, -40), 36U);
    EXPECT_EQ(linkRate(openNetwork("cafe", 1), { 36 }, -94), 36U); // a fixed rate does not adapt to the signal
    EXPECT_EQ(linkRate(openNetwork("cafe", 1), { 0x80 | 36 }, -40), 36U);
    EXPECT_EQ(linkRate(adHoc, { 108 }, -40), 22U);
    EXPECT_EQ(linkRate(adHoc, {}, -40), 22U);
}

TEST(LinkModel, QualityRangesFrom0To100)
{
    EXPECT_EQ(channelQuality(-100), 0U);
    EXPECT_EQ(channelQuality(-95), 0U);
    EXPECT_EQ(channelQuality(-80), 30U);
    EXPECT_EQ(channelQuality(-40), 100U);
    EXPECT_LT(retryShare(-50), retryShare(-80));
    EXPECT_LE(retryShare(-200), 0.4);
}
