#include "monitor/ui/LinkColours.h"

#include "monitor/ui/LinkPlotGeometry.h"

#include <gtest/gtest.h>

#include <set>

namespace {

constexpr double sufficientContrast = 3.0; // WCAG 2.1, for meaningful graphics

TEST(LinkColours, ContrastRatioMatchesWcag)
{
    EXPECT_NEAR(contrastRatio(Qt::black, Qt::white), 21.0, 0.001);
    EXPECT_NEAR(contrastRatio(Qt::white, Qt::black), 21.0, 0.001);
    EXPECT_NEAR(contrastRatio(Qt::red, Qt::red), 1.0, 0.001);
    EXPECT_NEAR(contrastRatio(QColor(0x77, 0x77, 0x77), Qt::white), 4.48, 0.005);
}

class OnBase : public testing::TestWithParam<QRgb> { };

TEST_P(OnBase, SeriesHaveSufficientContrast)
{
    const QColor base = QColor::fromRgb(GetParam());
    for (const LinkSeries series : linkSeries)
        EXPECT_GE(contrastRatio(seriesColour(series, base), base), sufficientContrast)
            << qPrintable(seriesName(series));
}

TEST_P(OnBase, GradesHaveSufficientContrast)
{
    const QColor base = QColor::fromRgb(GetParam());
    for (const LinkGrade grade : { LinkGrade::Weak, LinkGrade::Normal, LinkGrade::Good })
        EXPECT_GE(contrastRatio(gradeColour(grade, base), base), sufficientContrast) << static_cast<int>(grade);
}

TEST_P(OnBase, SeriesAndGradesHaveDistinctColours)
{
    const QColor base = QColor::fromRgb(GetParam());
    std::set<QRgb> colours;
    for (const LinkSeries series : linkSeries)
        colours.insert(seriesColour(series, base).rgb());
    EXPECT_EQ(colours.size(), linkSeries.size());
    std::set<QRgb> grades;
    for (const LinkGrade grade : { LinkGrade::Weak, LinkGrade::Normal, LinkGrade::Good })
        grades.insert(gradeColour(grade, base).rgb());
    EXPECT_EQ(grades.size(), 3U);
}

// White, light greys, the base colours of common dark themes, and black.
INSTANTIATE_TEST_SUITE_P(LinkColours, OnBase,
    testing::Values(0xffffffU, 0xfcfcfcU, 0xeeeeeeU, 0xe0e0e0U, 0x3d3d3dU, 0x353535U, 0x232323U, 0x1b1e20U, 0x000000U));

TEST(LinkColours, BlendInterpolates)
{
    EXPECT_EQ(blend(Qt::black, Qt::white, 0.0).rgb(), qRgb(0, 0, 0));
    EXPECT_EQ(blend(Qt::black, Qt::white, 1.0).rgb(), qRgb(255, 255, 255));
    EXPECT_NEAR(blend(Qt::black, Qt::white, 0.5).red(), 128, 1);
}

} // namespace
