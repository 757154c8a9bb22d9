#include "monitor/LinkFigures.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr auto maxUint32 = std::numeric_limits<std::uint32_t>::max();

TEST(TransmitRate, ShowsADecimalOnlyForOddRates)
{
    EXPECT_EQ(transmitRateText(108), u"54 Mbps");
    EXPECT_EQ(transmitRateText(11), u"5.5 Mbps");
    EXPECT_EQ(transmitRateText(2), u"1 Mbps");
    EXPECT_EQ(transmitRateText(1), u"0.5 Mbps");
    EXPECT_EQ(transmitRateText(0), u"0 Mbps");
}

TEST(TransmitRate, FormatsTheMaximumValues)
{
    EXPECT_EQ(transmitRateText(maxUint32), u"2147483647.5 Mbps");
    EXPECT_EQ(transmitRateText(maxUint32 - 1), u"2147483647 Mbps");
}

TEST(Throughput, IsRoundedDownBeforeItIsFormatted)
{
    EXPECT_EQ(throughputText(throughputKbps(1999, 0)), u"7.0");
    EXPECT_EQ(throughputText(throughputKbps(2000, 0)), u"8.0");
    EXPECT_EQ(throughputText(throughputKbps(249, 0)), u"0.0");
    EXPECT_EQ(throughputText(throughputKbps(250, 0)), u"1.0");
    EXPECT_EQ(throughputText(throughputKbps(70000, 70000)), u"0.0");
}

TEST(Throughput, SurvivesCounterWraparound)
{
    EXPECT_EQ(throughputKbps(500, maxUint32 - 499), 4U); // 1000 bytes
    EXPECT_EQ(throughputKbps(0, maxUint32), 0U); // one byte
}

TEST(Throughput, IsTheUnsignedDifferenceForAResetCounter)
{
    EXPECT_EQ(throughputKbps(0, 250), (maxUint32 - 249) / 250);
    EXPECT_EQ(throughputText(throughputKbps(0, 250)), u"17179868.0");
}

TEST(LinkQuality, IsScaledTruncatedAndCapped)
{
    EXPECT_EQ(linkQualityPercent(80, 0), 100U);
    EXPECT_EQ(linkQualityPercent(25, 0), 40U);
    EXPECT_EQ(linkQualityPercent(75, 0), 100U);
    EXPECT_EQ(linkQualityPercent(74, 0), 98U); // 98.8
    EXPECT_EQ(linkQualityPercent(1, 0), 11U); // 11.2
    EXPECT_EQ(linkQualityPercent(0, 0), 10U);
    EXPECT_EQ(linkQualityPercent(maxUint32, 0), 100U);
}

TEST(LinkQuality, IsExactForMultiplesOfFive)
{
    for (std::uint32_t raw = 0; raw <= 75; raw += 5)
        EXPECT_EQ(linkQualityPercent(raw, 0), raw / 5 * 6 + 10) << raw;
}

TEST(LinkQuality, IsTheRoundedMeanWithTheLastValue)
{
    // Raw 43 is 61 percent, raw 42 is 60 percent.
    EXPECT_EQ(linkQualityPercent(43, 80), 71U);
    EXPECT_EQ(linkQualityPercent(42, 80), 70U);
    EXPECT_EQ(linkQualityPercent(80, 100), 100U);
    EXPECT_EQ(linkQualityPercent(0, 1), 6U); // 5.5
}

TEST(SignalStrength, IsTheTruncatedMeanWithTheLastValue)
{
    EXPECT_EQ(signalPercent(63, 0), 63U);
    EXPECT_EQ(signalPercent(61, 80), 70U); // 70.5
    EXPECT_EQ(signalPercent(60, 80), 70U);
    EXPECT_EQ(signalPercent(0, 1), 0U);
    EXPECT_EQ(signalPercent(100, 100), 100U);
}

TEST(Grade, StartsAboveItsThreshold)
{
    EXPECT_EQ(gradeOf(71), LinkGrade::Good);
    EXPECT_EQ(gradeOf(70), LinkGrade::Normal);
    EXPECT_EQ(gradeOf(41), LinkGrade::Normal);
    EXPECT_EQ(gradeOf(40), LinkGrade::Weak);
    EXPECT_EQ(gradeOf(0), LinkGrade::Weak);
    EXPECT_EQ(gradeOf(100), LinkGrade::Good);
}

TEST(Grade, TextsEndWithASpace)
{
    EXPECT_EQ(gradeText(LinkGrade::Good), u"GOOD ");
    EXPECT_EQ(gradeText(LinkGrade::Normal), u"NORMAL ");
    EXPECT_EQ(gradeText(LinkGrade::Weak), u"WEAK ");
}

TEST(LinkTexts, FormatPercentAndPower)
{
    EXPECT_EQ(percentText(0), u"0%");
    EXPECT_EQ(percentText(100), u"100%");
    EXPECT_EQ(dBmText(-65), u"-65 dBm");
    EXPECT_EQ(dBmText(0), u"0 dBm");
}

TEST(LinkTexts, FormatChannelAndFrequency)
{
    EXPECT_EQ(channelText(6, 2437000), u"6 <--> 2437000 KHz");
    EXPECT_EQ(channelText(161, 5805000), u"161 <--> 5805000 KHz");
}

TEST(LinkTexts, FormatNetworkAndAccessPoint)
{
    EXPECT_EQ(connectionText(QStringLiteral("home"), { 0x00, 0x0a, 0x22, 0xff, 0x44, 0xbc }),
        u"Connected <--> home <--> 00-0A-22-FF-44-BC");
    EXPECT_EQ(connectionText(QStringLiteral("%s %1 %d"), {}), u"Connected <--> %s %1 %d <--> 00-00-00-00-00-00");
}

} // namespace
