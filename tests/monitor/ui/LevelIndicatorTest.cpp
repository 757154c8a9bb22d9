#include "monitor/ui/LevelIndicator.h"

#include "monitor/LinkFigures.h"
#include "monitor/ui/LinkColours.h"
#include "tests/monitor/ui/MonitorPalettes.h"

#include <QAccessible>
#include <QImage>
#include <gtest/gtest.h>

namespace {

// A pixel in the upper part, where there are no marks.
QRgb pixelAt(const QImage& image, double share)
{
    return image.pixel(static_cast<int>(image.width() * share), image.height() / 4) & RGB_MASK;
}

QImage pictureOf(LevelIndicator& indicator, const QPalette& palette, int value)
{
    indicator.setPalette(palette);
    indicator.setRange(0, 100);
    indicator.resize(200, 20);
    indicator.setValue(value);
    return indicator.grab().toImage();
}

TEST(LevelIndicator, FillsUpToItsValueInTheColourOfTheGrade)
{
    for (const QPalette& palette : { lightPalette(), darkPalette() }) {
        const QColor base = palette.color(QPalette::Base);
        LevelIndicator indicator;
        const auto colourOf = [&base](LinkGrade grade) { return gradeColour(grade, base).rgb() & RGB_MASK; };

        EXPECT_EQ(pixelAt(pictureOf(indicator, palette, 85), 0.5), colourOf(LinkGrade::Good));
        EXPECT_EQ(pixelAt(pictureOf(indicator, palette, 85), 0.95), base.rgb() & RGB_MASK);
        EXPECT_EQ(pixelAt(pictureOf(indicator, palette, 60), 0.5), colourOf(LinkGrade::Normal));
        EXPECT_EQ(pixelAt(pictureOf(indicator, palette, 60), 0.65), base.rgb() & RGB_MASK);
        EXPECT_EQ(pixelAt(pictureOf(indicator, palette, 30), 0.2), colourOf(LinkGrade::Weak));
        EXPECT_EQ(pixelAt(pictureOf(indicator, palette, 100), 0.97), colourOf(LinkGrade::Good));
        EXPECT_EQ(pixelAt(pictureOf(indicator, palette, 0), 0.03), base.rgb() & RGB_MASK);
    }
}

TEST(LevelIndicator, FillsFromTheRightInRightToLeftLayouts)
{
    LevelIndicator indicator;
    indicator.setLayoutDirection(Qt::RightToLeft);
    const QImage image = pictureOf(indicator, lightPalette(), 85);
    EXPECT_EQ(pixelAt(image, 0.05), QColor(Qt::white).rgb() & RGB_MASK);
    EXPECT_EQ(pixelAt(image, 0.5), gradeColour(LinkGrade::Good, Qt::white).rgb() & RGB_MASK);
}

TEST(LevelIndicator, ExposesItsValueAndRangeToScreenReaders)
{
    LevelIndicator indicator;
    indicator.setRange(0, 100);
    indicator.setValue(85);
    QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(&indicator);
    ASSERT_NE(accessible, nullptr);
    EXPECT_EQ(accessible->role(), QAccessible::ProgressBar);
    ASSERT_NE(accessible->valueInterface(), nullptr);
    EXPECT_EQ(accessible->valueInterface()->currentValue().toInt(), 85);
    EXPECT_EQ(accessible->valueInterface()->minimumValue().toInt(), 0);
    EXPECT_EQ(accessible->valueInterface()->maximumValue().toInt(), 100);
}

TEST(LevelIndicator, GrowsWithTheFont)
{
    LevelIndicator indicator;
    const QSize before = indicator.sizeHint();
    QFont font = indicator.font();
    font.setPointSizeF(font.pointSizeF() * 2);
    indicator.setFont(font);
    EXPECT_GT(indicator.sizeHint().width(), before.width());
    EXPECT_GT(indicator.sizeHint().height(), before.height());
}

} // namespace
