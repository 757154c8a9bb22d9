#include "survey/ui/ChannelViewGeometry.h"

#include "survey/ui/ChannelViewLabels.h"
#include "tests/survey/ChannelViewNetworks.h"

#include <QFont>
#include <gtest/gtest.h>

namespace {

const QFontMetrics& metrics()
{
    static const QFontMetrics metricsOfDefaultFont { QFont() };
    return metricsOfDefaultFont;
}

struct Size {
    int characters;
    int lines;
};

QRectF contentsOf(const Size& size)
{
    return { 0, 0, 1.0 * metrics().averageCharWidth() * size.characters, 1.0 * metrics().height() * size.lines };
}

constexpr Size roomy { 130, 24 };
constexpr Size small { 30, 8 };

ChannelViewGeometry geometryOf(const Size& size, const ChannelViewModel& model)
{
    return { contentsOf(size), metrics(), model };
}

using Curve = ChannelViewGeometry::Curve;

const Curve& curveOfRow(const ChannelViewGeometry& geometry, int row)
{
    return *std::find_if(geometry.curves.begin(), geometry.curves.end(),
        [row](const Curve& curve) { return curve.network->row == row; });
}

struct ChannelViewGeometryTest : testing::Test {
    ChannelViewModel model { { networkOn(0, u"Low"_qs, 6, 40), networkOn(1, u"High"_qs, 6, 90),
                                 networkOn(2, u"Edge"_qs, 14, 70), networkOn(3, u"Five"_qs, 36, 60) },
        -1, -1 };
    ChannelViewGeometry geometry { geometryOf(roomy, model) };

    [[nodiscard]] int rowAt(double x, double y) const
    {
        const Curve* const curve = geometry.curveAt({ x, y });
        return curve == nullptr ? -1 : curve->network->row;
    }
};

TEST_F(ChannelViewGeometryTest, CurvesAreOneChannelWideAndAsHighAsTheSignal)
{
    const Curve& low = curveOfRow(geometry, 0);
    EXPECT_DOUBLE_EQ(low.peak.x(), *geometry.xOfFrequency(2'437'000));
    EXPECT_NEAR(low.left, *geometry.xOfFrequency(2'427'000), 1e-6);
    EXPECT_NEAR(low.right, *geometry.xOfFrequency(2'447'000), 1e-6);
    EXPECT_DOUBLE_EQ(low.peak.y(), geometry.yOfSignal(40));
    EXPECT_DOUBLE_EQ(geometry.yOfSignal(0), geometry.area.bottom());
    EXPECT_DOUBLE_EQ(geometry.yOfSignal(100), geometry.area.top());
    EXPECT_NEAR(geometry.area.bottom() - geometry.yOfSignal(40), geometry.area.height() * 0.4, 1e-6);
}

TEST_F(ChannelViewGeometryTest, EveryChannelOfTheTableLiesInItsPane)
{
    double previous = 0;
    for (const ChannelFreq& each : ChannelFreqTable) {
        const auto& pane = geometry.panes[each.channel <= 14 ? 0 : 1];
        const double x = *geometry.xOfFrequency(each.frequencyKhz);
        EXPECT_GT(x, previous);
        EXPECT_GE(x, pane.area.left());
        EXPECT_LE(x, pane.area.right());
        previous = x;
    }
    EXPECT_LE(geometry.panes[1].area.right(), geometry.area.right() + 1e-6);
    EXPECT_FALSE(geometry.xOfFrequency(5'400'000).has_value());
}

TEST_F(ChannelViewGeometryTest, FiveGigahertzIsHiddenWithoutNetworks)
{
    EXPECT_EQ(geometry.panes.size(), 2U);
    model.networks.pop_back();
    const ChannelViewGeometry only2GHz = geometryOf(roomy, model);
    ASSERT_EQ(only2GHz.panes.size(), 1U);
    EXPECT_NEAR(only2GHz.panes[0].area.right(), only2GHz.area.right(), 1e-6);
    EXPECT_EQ(geometryOf(roomy, {}).panes.size(), 1U);
}

TEST_F(ChannelViewGeometryTest, ABandWithoutNetworksTakesLessRoom)
{
    const ChannelViewModel only5GHz { { networkOn(0, u"Five"_qs, 36, 60) }, -1, -1 };
    const ChannelViewGeometry other = geometryOf(roomy, only5GHz);
    EXPECT_LT(other.panes[0].area.width(), geometry.panes[0].area.width() / 2);
    EXPECT_LT(other.panes[0].area.width(), other.panes[1].area.width() / 2);
}

TEST_F(ChannelViewGeometryTest, NetworksOnUnknownChannelsAreNotDrawn)
{
    model.networks
        = { networkOn(0, u"?"_qs, 0, 60), { 1, u"odd"_qs, 2'405'000, 0, 50 }, { 2, u"?"_qs, 5'400'000, 0, 50 } };
    EXPECT_TRUE(geometryOf(roomy, model).curves.empty());
}

TEST_F(ChannelViewGeometryTest, NetworksOnOneChannelAreRankedBySignal)
{
    EXPECT_EQ(curveOfRow(geometry, 1).rankOnChannel, 0);
    EXPECT_EQ(curveOfRow(geometry, 0).rankOnChannel, 1);
    EXPECT_EQ(curveOfRow(geometry, 2).rankOnChannel, 0);
}

TEST_F(ChannelViewGeometryTest, APointMeansTheCurveWithTheNearestOutlineAroundIt)
{
    const QPointF low = curveOfRow(geometry, 0).peak;
    const QPointF high = curveOfRow(geometry, 1).peak;
    EXPECT_EQ(rowAt(low.x(), low.y() + 1), 0);
    EXPECT_EQ(rowAt(low.x(), geometry.area.bottom() - 1), 0);
    EXPECT_EQ(rowAt(high.x(), high.y() + 1), 1);
    EXPECT_EQ(rowAt(high.x(), high.y() - geometry.gap + 1), 1); // on the line itself
    EXPECT_EQ(rowAt(high.x(), high.y() - geometry.gap - 1), -1);
    EXPECT_EQ(rowAt(high.x(), geometry.area.bottom() + geometry.gap + 1), -1);
    EXPECT_EQ(rowAt(curveOfRow(geometry, 2).left - 1, geometry.area.bottom()), -1);
}

TEST_F(ChannelViewGeometryTest, ANetworkWithoutSignalCanStillBeClicked)
{
    model.networks = { networkOn(0, u"Faint"_qs, 6, 0) };
    geometry = geometryOf(roomy, model);
    EXPECT_LT(geometry.curves[0].peak.y(), geometry.area.bottom());
    EXPECT_EQ(rowAt(geometry.curves[0].peak.x(), geometry.area.bottom() - 1), 0);
}

struct TickCase {
    const char* name;
    Size size;
    std::vector<ChannelViewNetwork> networks;
};

class ChannelViewTicks : public testing::TestWithParam<TickCase> { };

TEST_P(ChannelViewTicks, NumbersOfChannelsStayApart)
{
    const ChannelViewModel model { GetParam().networks, -1, -1 };
    const ChannelViewGeometry geometry = geometryOf(GetParam().size, model);
    QRectF previous;
    int labels = 0;
    for (const auto& tick : geometry.ticks) {
        if (tick.label.isEmpty())
            continue;
        EXPECT_GT(tick.label.left(), previous.right()) << tick.channel;
        EXPECT_NEAR(tick.label.center().x(), tick.x, 1e-6);
        previous = tick.label;
        ++labels;
    }
    EXPECT_GE(labels, 3);
    EXPECT_LE(previous.bottom(), contentsOf(GetParam().size).bottom());
}

INSTANTIATE_TEST_SUITE_P(Sizes, ChannelViewTicks,
    testing::Values(TickCase { "RoomyWithMany", roomy, manyNetworks() },
        TickCase { "SmallWithMany", small, manyNetworks() }, TickCase { "RoomyWithNone", roomy, {} },
        TickCase { "SmallWithNone", small, {} },
        TickCase { "SmallWithBothBands", small, { networkOn(0, u"A"_qs, 140, 5), networkOn(1, u"B"_qs, 149, 5) } }),
    [](const auto& each) { return std::string(each.param.name); });

TEST(ChannelViewTicksInRoom, NumberEveryChannelWhereTheyFit)
{
    const ChannelViewGeometry geometry = geometryOf(roomy, {});
    ASSERT_EQ(geometry.ticks.size(), 14U);
    for (const auto& tick : geometry.ticks)
        EXPECT_FALSE(tick.label.isEmpty()) << tick.channel;
}

TEST(ChannelViewTicksInRoom, ChannelsInUseComeBeforeTheOthers)
{
    // Channel 5 would hide behind 6, which is numbered on an empty axis of this width.
    const auto hasNumber = [](const ChannelViewModel& model, int channel) {
        const ChannelViewGeometry geometry = geometryOf({ 24, 8 }, model);
        return std::any_of(geometry.ticks.begin(), geometry.ticks.end(),
            [channel](const auto& tick) { return tick.channel == channel && !tick.label.isEmpty(); });
    };
    EXPECT_TRUE(hasNumber({}, 6));
    EXPECT_FALSE(hasNumber({}, 5));
    const ChannelViewModel model { { networkOn(0, u"A"_qs, 5, 50) }, -1, -1 };
    EXPECT_TRUE(hasNumber(model, 5));
    EXPECT_FALSE(hasNumber(model, 6));
}

TEST(ChannelViewTicksInRoom, Channel38HasATickOnlyInUse)
{
    const auto hasTick = [](const ChannelViewModel& model) {
        const ChannelViewGeometry geometry = geometryOf(roomy, model);
        return std::any_of(
            geometry.ticks.begin(), geometry.ticks.end(), [](const auto& tick) { return tick.channel == 38; });
    };
    EXPECT_FALSE(hasTick({ { networkOn(0, u"A"_qs, 36, 50) }, -1, -1 }));
    EXPECT_TRUE(hasTick({ { networkOn(0, u"A"_qs, 38, 50) }, -1, -1 }));
}

TEST(ChannelViewGeometryWithoutRoom, StaysOrdered)
{
    ChannelViewModel model { manyNetworks(), 3, 5 };
    const ChannelViewGeometry geometry(QRectF(0, 0, 1, 1), metrics(), model);
    EXPECT_GT(geometry.area.width(), 0);
    EXPECT_GT(geometry.area.height(), 0);
    (void)placeChannelViewLabels(geometry, model, metrics());
    (void)geometry.curveAt({ 0, 0 });
}

} // namespace
