#include "monitor/StatisticsFigures.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr auto maximum = std::numeric_limits<std::int64_t>::max();
constexpr auto minimum = std::numeric_limits<std::int64_t>::min();

NDIS_802_11_STATISTICS statisticsOf(std::int64_t transmitted, std::int64_t retried)
{
    NDIS_802_11_STATISTICS statistics {};
    statistics.TransmittedFragmentCount = transmitted;
    statistics.RetryCount = retried;
    return statistics;
}

TEST(StatisticsFigures, FramesWithoutRetryAreFramesSentMinusRetries)
{
    EXPECT_EQ(transmittedWithoutRetry(statisticsOf(1000, 250)), 750);
    EXPECT_EQ(transmittedWithoutRetry(statisticsOf(3, 5)), -2);
    EXPECT_EQ(transmittedWithoutRetry(statisticsOf(minimum, 1)), maximum);
}

TEST(StatisticsFigures, CountersAreSigned64BitNumbers)
{
    EXPECT_EQ(counterText(0), u"0");
    EXPECT_EQ(counterText(-2), u"-2");
    EXPECT_EQ(counterText(maximum), u"9223372036854775807");
    EXPECT_EQ(counterText(minimum), u"-9223372036854775808");
}

TEST(StatisticsFigures, GeneralCountersAreUnsigned32BitNumbers)
{
    EXPECT_EQ(generalCounterText(0), u"0");
    EXPECT_EQ(generalCounterText(std::numeric_limits<std::uint32_t>::max()), u"4294967295");
}

} // namespace
