#include "survey/ChannelViewModel.h"

#include "platform/NetworkName.h"
#include "survey/AccessPoint.h"
#include "survey/ChannelBands.h"
#include "tests/survey/ChannelViewNetworks.h"

#include <gtest/gtest.h>

#include <array>

namespace {

AccessPoint listRow(const QString& name, const QString& signal, const QString& channel)
{
    return AccessPoint::initWithSSID(name, u"00-11-22-33-44-55"_qs, signal, channel, {}, {}, {});
}

struct RowAfterStep : testing::Test {
    // Along the axis: rows 3, 1, 4, 0. By signal: rows 0, 1, 4, 3. Row 2 is not drawn.
    ChannelViewModel model { { networkOn(0, u"A"_qs, 36, 90), networkOn(4, u"D"_qs, 6, 40),
                                 networkOn(1, u"B"_qs, 6, 80), networkOn(2, u"?"_qs, 0, 99),
                                 networkOn(3, u"C"_qs, 1, 20) },
        -1, -1 };

    int after(int selectedRow, ChannelStep step)
    {
        model.selectedRow = selectedRow;
        return rowAfterStep(model, step);
    }
};

TEST(ChannelRangeOf, EveryChannelOfTheTableHasItsBand)
{
    for (const ChannelFreq& each : ChannelFreqTable) {
        const auto range = channelRangeOf(each.frequencyKhz);
        ASSERT_TRUE(range.has_value()) << each.channel;
        EXPECT_EQ(channelRanges[*range].band == ChannelBand::Band2GHz, each.channel <= 14) << each.channel;
    }
}

TEST(ChannelRangeOf, FrequenciesWhoseChannelIsNotWhollyInsideHaveNone)
{
    for (const std::uint32_t khz : { 0U, 2'409'999U, 2'486'001U, 3'000'000U, 5'400'000U, 5'825'000U, 0xffffffffU })
        EXPECT_FALSE(channelRangeOf(khz).has_value()) << khz;
    EXPECT_TRUE(channelRangeOf(2'410'000).has_value());
    EXPECT_TRUE(channelRangeOf(2'486'000).has_value());
}

TEST(ChannelViewNetworks, AreTheRowsOfTheListInTheirOrder)
{
    const std::array rows { listRow(u"Compass"_qs, u"80"_qs, u"6"_qs), listRow({}, u"55"_qs, u"149"_qs) };
    const auto networks = channelViewNetworks(rows);
    ASSERT_EQ(networks.size(), 2U);
    EXPECT_EQ(networks[0].row, 0);
    EXPECT_EQ(networks[0].name, u"Compass");
    EXPECT_EQ(networks[0].frequencyKhz, 2'437'000U);
    EXPECT_EQ(networks[0].channel, 6);
    EXPECT_EQ(networks[0].signal, 80);
    EXPECT_EQ(networks[1].row, 1);
    EXPECT_EQ(networks[1].name, NetworkName::hiddenPlaceholder());
    EXPECT_EQ(networks[1].frequencyKhz, 5'745'000U);
}

TEST(ChannelViewNetworks, AChannelOutsideTheTableIsUnknown)
{
    for (const QString& channel : { u""_qs, u"15"_qs, u"06"_qs, u"-1"_qs }) {
        const std::array rows { listRow(u"Compass"_qs, u"80"_qs, channel) };
        const auto networks = channelViewNetworks(rows);
        ASSERT_EQ(networks.size(), 1U);
        EXPECT_FALSE(isDrawn(networks[0])) << qPrintable(channel);
        EXPECT_EQ(networks[0].channel, 0);
    }
}

TEST(ChannelViewNetworks, SignalsAreLimitedToTheAxis)
{
    const std::array rows { listRow(u"A"_qs, u"140"_qs, u"1"_qs), listRow(u"B"_qs, u"-3"_qs, u"1"_qs) };
    const auto networks = channelViewNetworks(rows);
    EXPECT_EQ(networks[0].signal, 100);
    EXPECT_EQ(networks[1].signal, 0);
}

TEST_F(RowAfterStep, GoesAlongTheAxisAndDownTheSignalsOfOneChannel)
{
    EXPECT_EQ(after(3, ChannelStep::HigherFrequency), 1);
    EXPECT_EQ(after(1, ChannelStep::HigherFrequency), 4);
    EXPECT_EQ(after(4, ChannelStep::HigherFrequency), 0);
    EXPECT_EQ(after(0, ChannelStep::LowerFrequency), 4);
    EXPECT_EQ(after(4, ChannelStep::LowerFrequency), 1);
    EXPECT_EQ(after(1, ChannelStep::LowerFrequency), 3);
}

TEST_F(RowAfterStep, GoesBySignal)
{
    EXPECT_EQ(after(0, ChannelStep::Weaker), 1);
    EXPECT_EQ(after(4, ChannelStep::Weaker), 3);
    EXPECT_EQ(after(3, ChannelStep::Stronger), 4);
    EXPECT_EQ(after(1, ChannelStep::Stronger), 0);
}

TEST_F(RowAfterStep, StopsAtTheEnds)
{
    EXPECT_EQ(after(3, ChannelStep::LowerFrequency), 3);
    EXPECT_EQ(after(0, ChannelStep::HigherFrequency), 0);
    EXPECT_EQ(after(0, ChannelStep::Stronger), 0);
    EXPECT_EQ(after(3, ChannelStep::Weaker), 3);
    EXPECT_EQ(after(4, ChannelStep::First), 3);
    EXPECT_EQ(after(4, ChannelStep::Last), 0);
}

TEST_F(RowAfterStep, StartsAtAnEndWithoutADrawnSelection)
{
    for (const int none : { -1, 2, 77 }) {
        EXPECT_EQ(after(none, ChannelStep::HigherFrequency), 3);
        EXPECT_EQ(after(none, ChannelStep::LowerFrequency), 0);
        EXPECT_EQ(after(none, ChannelStep::Stronger), 0);
        EXPECT_EQ(after(none, ChannelStep::Weaker), 0);
    }
}

TEST_F(RowAfterStep, ReachesEveryDrawnNetwork)
{
    model.networks = manyNetworks();
    for (const ChannelStep step : { ChannelStep::HigherFrequency, ChannelStep::Weaker }) {
        std::vector<bool> seen(model.networks.size());
        int row = after(-1, step);
        for (std::size_t count = 0; count < model.networks.size(); ++count) {
            seen[static_cast<std::size_t>(row)] = true;
            row = after(row, step);
        }
        EXPECT_EQ(std::count(seen.begin(), seen.end(), false), 0);
    }
}

TEST_F(RowAfterStep, LeadsNowhereWhereNothingIsDrawn)
{
    model.networks = { networkOn(0, u"?"_qs, 0, 50) };
    EXPECT_EQ(after(0, ChannelStep::First), -1);
    model.networks.clear();
    EXPECT_EQ(after(-1, ChannelStep::Weaker), -1);
}

} // namespace
