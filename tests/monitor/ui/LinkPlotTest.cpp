#include "monitor/ui/LinkPlot.h"

#include "monitor/ui/LinkColours.h"
#include "monitor/ui/LinkPlotGeometry.h"
#include "tests/monitor/ui/MonitorPalettes.h"

#include <QAccessible>
#include <QImage>
#include <QTest>
#include <gtest/gtest.h>

#include <set>

namespace {

// Puts the four curves at different heights.
const LinkSample farApart { 90, 60, 350, 100 };

struct LightPlot : LinkPlot {
    LightPlot()
    {
        setPalette(lightPalette());
        resize(sizeHint());
    }
};

class PaintCountingPlot final : public LinkPlot {
public:
    int paints { 0 };

protected:
    void paintEvent(QPaintEvent* event) override
    {
        ++paints;
        LinkPlot::paintEvent(event);
    }
};

// The colours between the axes; the legend is outside.
std::set<QRgb> coloursOfArea(LinkPlot& plot)
{
    const QImage image = plot.grab().toImage();
    const ThroughputScale scale = throughputScale(plot.history().maxThroughputKbps());
    const QRect area = LinkPlotGeometry(plot.contentsRect(), plot.fontMetrics(), scale).area;
    const double ratio = image.devicePixelRatio();
    std::set<QRgb> colours;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x)
            colours.insert(image.pixel(static_cast<int>(x * ratio), static_cast<int>(y * ratio)) & RGB_MASK);
    }
    return colours;
}

bool containsCurve(const std::set<QRgb>& colours, LinkSeries series, const QColor& base)
{
    return colours.contains(seriesColour(series, base).rgb() & RGB_MASK);
}

void fill(LinkPlot& plot, const LinkSample& sample, std::size_t ticks = 20)
{
    for (std::size_t tick = 0; tick < ticks; ++tick)
        plot.append(sample);
}

TEST(LinkPlot, DrawsEachCurveInItsColourOnLightAndDarkPalettes)
{
    for (const QPalette& palette : { lightPalette(), darkPalette() }) {
        LinkPlot plot;
        plot.setPalette(palette);
        plot.resize(plot.sizeHint());
        fill(plot, farApart);
        const QColor base = palette.color(QPalette::Base);
        const auto colours = coloursOfArea(plot);
        EXPECT_TRUE(colours.contains(base.rgb() & RGB_MASK));
        for (const LinkSeries series : linkSeries)
            EXPECT_TRUE(containsCurve(colours, series, base)) << qPrintable(seriesName(series));
    }
}

TEST(LinkPlot, DrawsASingleSample)
{
    LightPlot plot;
    plot.append(farApart);
    plot.append(std::nullopt);
    for (const LinkSeries series : linkSeries)
        EXPECT_TRUE(containsCurve(coloursOfArea(plot), series, Qt::white)) << qPrintable(seriesName(series));
}

TEST(LinkPlot, ShowsAMessageWithoutSamples)
{
    LightPlot plot;
    fill(plot, farApart, 1);
    for (std::size_t tick = 0; tick < LinkHistory::capacity; ++tick)
        plot.append(std::nullopt);
    const auto colours = coloursOfArea(plot);
    for (const LinkSeries series : linkSeries)
        EXPECT_FALSE(containsCurve(colours, series, Qt::white)) << qPrintable(seriesName(series));
    EXPECT_TRUE(colours.contains(QColor(Qt::black).rgb() & RGB_MASK)); // the message
}

TEST(LinkPlot, OmitsAnUnknownThroughput)
{
    LightPlot plot;
    fill(plot, { 90, 60, std::nullopt, 100 });
    const auto colours = coloursOfArea(plot);
    EXPECT_FALSE(containsCurve(colours, LinkSeries::Transmit, Qt::white));
    EXPECT_TRUE(containsCurve(colours, LinkSeries::Receive, Qt::white));
}

TEST(LinkPlot, CurvesDifferWithoutColour)
{
    // The swatches of the legend are different even in black and white.
    LightPlot plot;
    const QImage image = plot.grab().toImage().convertToFormat(QImage::Format_Grayscale8);
    const LinkPlotGeometry geometry(plot.contentsRect(), plot.fontMetrics(), throughputScale(0));
    const auto outlineOf = [&image](const QRect& swatch) {
        QImage outline = image.copy(swatch);
        for (int y = 0; y < outline.height(); ++y) {
            for (int x = 0; x < outline.width(); ++x)
                outline.setPixelColor(x, y, outline.pixelColor(x, y).value() < 0xc0 ? Qt::black : Qt::white);
        }
        return outline;
    };
    for (std::size_t one = 0; one < geometry.legend.size(); ++one) {
        for (std::size_t other = one + 1; other < geometry.legend.size(); ++other)
            EXPECT_NE(outlineOf(geometry.legend[one].swatch), outlineOf(geometry.legend[other].swatch));
    }
}

TEST(LinkPlot, AccessibleDescriptionContainsTheNewestValues)
{
    LinkPlot plot;
    EXPECT_EQ(plot.accessibleDescription(), u"No values yet.");
    plot.append(farApart);
    EXPECT_EQ(plot.accessibleDescription(),
        u"Link quality 90 percent, signal strength 60 percent, transmit 350 kilobits per second, receive 100 kilobits "
        u"per second.");
    plot.append(std::nullopt);
    EXPECT_EQ(plot.accessibleDescription(), u"Not connected.");
}

TEST(LinkPlot, IsAChartForScreenReaders)
{
    LinkPlot plot;
    plot.setAccessibleName(QStringLiteral("Link"));
    QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(&plot);
    ASSERT_NE(accessible, nullptr);
    EXPECT_EQ(accessible->role(), QAccessible::Chart);
    EXPECT_EQ(accessible->text(QAccessible::Name), u"Link");
    EXPECT_EQ(accessible->text(QAccessible::Description), u"No values yet.");
}

TEST(LinkPlot, RepaintsOnlyWhenVisibleAndChanged)
{
    PaintCountingPlot plot;
    plot.resize(plot.sizeHint());
    plot.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&plot));
    QCoreApplication::processEvents();

    plot.paints = 0;
    plot.append(std::nullopt);
    QCoreApplication::processEvents();
    EXPECT_EQ(plot.paints, 0);

    plot.append(farApart);
    QCoreApplication::processEvents();
    EXPECT_EQ(plot.paints, 1);

    plot.append(std::nullopt); // the curves move
    QCoreApplication::processEvents();
    EXPECT_EQ(plot.paints, 2);

    plot.hide();
    plot.append(farApart);
    QCoreApplication::processEvents();
    EXPECT_EQ(plot.paints, 2);
}

TEST(LinkPlot, UsesTheFullResolutionOfTheDevice)
{
    LightPlot plot;
    fill(plot, farApart);
    QImage image(plot.size() * 2, QImage::Format_RGB32);
    image.setDevicePixelRatio(2.0);
    plot.render(&image);
    // If the plot were scaled up, the two rows of each pair would be equal.
    bool differs = false;
    for (int y = 0; y + 1 < image.height() && !differs; y += 2)
        differs = std::memcmp(image.constScanLine(y), image.constScanLine(y + 1), size_t(image.bytesPerLine())) != 0;
    EXPECT_TRUE(differs);
}

TEST(LinkPlot, GrowsWithTheFont)
{
    LinkPlot plot;
    const QSize before = plot.minimumSizeHint();
    QFont font = plot.font();
    font.setPointSizeF(font.pointSizeF() * 2);
    plot.setFont(font);
    EXPECT_GT(plot.minimumSizeHint().width(), before.width());
    EXPECT_GT(plot.minimumSizeHint().height(), before.height());
}

} // namespace
