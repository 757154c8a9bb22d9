#include "monitor/ui/LinkPlotGeometry.h"

#include <QFont>
#include <gtest/gtest.h>

namespace {

struct LinkPlotGeometryTest : testing::Test {
    QFontMetrics metrics { QFont() };
    ThroughputScale scale { 20 }; // maximum 100 kbit/s
    LinkPlotGeometry wide { QRect(0, 0, metrics.height() * 50, metrics.height() * 14), metrics, scale };
};

LinkSample sampleOf(std::uint32_t quality, std::optional<std::uint32_t> transmit = 0)
{
    return { quality, 50, transmit, 0 };
}

TEST_F(LinkPlotGeometryTest, AxesSpanFiveMinutesAndFullHeight)
{
    EXPECT_DOUBLE_EQ(wide.xOfAge(0), wide.area.right());
    EXPECT_NEAR(wide.xOfAge(150), wide.area.left(), 1.0);
    EXPECT_DOUBLE_EQ(wide.yOfHeight(0), wide.area.bottom());
    EXPECT_DOUBLE_EQ(wide.yOfHeight(1), wide.area.top());
}

TEST_F(LinkPlotGeometryTest, HeightIsRelativeToTheAxisOfTheSeries)
{
    const LinkSample sample { 40, 75, 50, 1000 };
    EXPECT_EQ(heightOf(LinkSeries::LinkQuality, sample, scale), 0.4);
    EXPECT_EQ(heightOf(LinkSeries::SignalStrength, sample, scale), 0.75);
    EXPECT_EQ(heightOf(LinkSeries::Transmit, sample, scale), 0.5);
    EXPECT_EQ(heightOf(LinkSeries::Receive, sample, scale), 1.0);
    EXPECT_EQ(heightOf(LinkSeries::Transmit, sampleOf(1, std::nullopt), scale), std::nullopt);
}

TEST_F(LinkPlotGeometryTest, GapBreaksTheCurve)
{
    LinkHistory history;
    history.append(sampleOf(10));
    history.append(sampleOf(20));
    history.append(std::nullopt);
    history.append(sampleOf(30));
    const auto runs = wide.runs(LinkSeries::LinkQuality, history, scale);
    ASSERT_EQ(runs.size(), 2U);
    ASSERT_EQ(runs[0].size(), 1U);
    EXPECT_EQ(runs[0][0], QPointF(wide.xOfAge(0), wide.yOfHeight(0.3)));
    ASSERT_EQ(runs[1].size(), 2U);
    EXPECT_EQ(runs[1][0], QPointF(wide.xOfAge(2), wide.yOfHeight(0.2)));
    EXPECT_EQ(runs[1][1], QPointF(wide.xOfAge(3), wide.yOfHeight(0.1)));
}

TEST_F(LinkPlotGeometryTest, UnknownThroughputBreaksOnlyItsOwnCurve)
{
    LinkHistory history;
    history.append(sampleOf(10));
    history.append(sampleOf(10, std::nullopt));
    history.append(sampleOf(10));
    EXPECT_EQ(wide.runs(LinkSeries::Transmit, history, scale).size(), 2U);
    EXPECT_EQ(wide.runs(LinkSeries::Receive, history, scale).size(), 1U);
    EXPECT_EQ(wide.runs(LinkSeries::LinkQuality, history, scale).size(), 1U);
}

TEST_F(LinkPlotGeometryTest, LegendWrapsInANarrowPlot)
{
    EXPECT_EQ(wide.legend.front().text.top(), wide.legend.back().text.top());
    const LinkPlotGeometry narrow(QRect(0, 0, metrics.height() * 16, metrics.height() * 14), metrics, scale);
    EXPECT_LT(narrow.legend.front().text.top(), narrow.legend.back().text.top());
    EXPECT_LT(narrow.legend.back().text.bottom(), narrow.area.top());
    for (const auto& entry : narrow.legend) {
        EXPECT_GE(entry.swatch.left(), narrow.area.left());
        EXPECT_LE(entry.text.right(), narrow.throughputUnit.left());
    }
}

TEST_F(LinkPlotGeometryTest, AreaIsNeverEmpty)
{
    const LinkPlotGeometry tiny(QRect(0, 0, 1, 1), metrics, scale);
    EXPECT_GT(tiny.area.width(), 0);
    EXPECT_GT(tiny.area.height(), 0);
}

} // namespace
