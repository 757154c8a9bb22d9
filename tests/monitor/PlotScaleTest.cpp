#include "monitor/PlotScale.h"

#include "monitor/LinkHistory.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

TEST(ThroughputScale, HasAMinimumForAnIdleLink)
{
    EXPECT_EQ(throughputScale(0).topKbps(), 50U);
    EXPECT_EQ(throughputScale(50).topKbps(), 50U);
}

TEST(ThroughputScale, UsesStepsOf1And2And5)
{
    EXPECT_EQ(throughputScale(51).stepKbps, 20U);
    EXPECT_EQ(throughputScale(100).stepKbps, 20U);
    EXPECT_EQ(throughputScale(101).stepKbps, 50U);
    EXPECT_EQ(throughputScale(251).stepKbps, 100U);
    EXPECT_EQ(throughputScale(54000).stepKbps, 20000U);
}

TEST(ThroughputScale, IsTheSmallestThatCoversTheValue)
{
    std::uint32_t lastTop = 0;
    for (std::uint32_t kbps = 0; kbps <= maxLinkKbps; kbps += 37) {
        const auto scale = throughputScale(kbps);
        EXPECT_GE(scale.topKbps(), kbps);
        EXPECT_GE(scale.topKbps(), lastTop);
        if (scale.topKbps() > 50) {
            EXPECT_GT(kbps * 5, scale.topKbps() * 2) << kbps; // uses at least two fifths of the plot
        }
        lastTop = scale.topKbps();
    }
}

TEST(ThroughputScale, IsCappedAtTheMaximumLinkRate)
{
    EXPECT_EQ(throughputScale(std::numeric_limits<std::uint32_t>::max()), throughputScale(maxLinkKbps));
}

TEST(ThroughputScale, LabelsGridLinesInItsUnit)
{
    const auto slow = throughputScale(900);
    EXPECT_EQ(slow.unitText(), u"kbit/s");
    EXPECT_EQ(slow.labelText(0), u"0");
    EXPECT_EQ(slow.labelText(5), u"1000");
    const auto fast = throughputScale(4000);
    EXPECT_EQ(fast.unitText(), u"Mbit/s");
    EXPECT_EQ(fast.labelText(3), u"3");
}

} // namespace
