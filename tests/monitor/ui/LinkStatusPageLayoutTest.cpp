#include "monitor/ui/LevelIndicator.h"
#include "monitor/ui/LinkPlot.h"
#include "monitor/ui/LinkStatusPageController.h"
#include "tests/monitor/ui/MonitorDoubles.h"

#include <QAccessible>
#include <QCheckBox>
#include <QFormLayout>
#include <QLabel>
#include <QTabWidget>
#include <gtest/gtest.h>

#include <algorithm>

namespace {

struct LinkStatusPageLayoutTest : testing::Test {
    MonitoredCard card;
    QTabWidget window;
    LinkStatusPageController* page { new LinkStatusPageController(
        card.adapter, card.runLoop, card.assertions, nullptr) };

    LinkStatusPageLayoutTest() { window.addTab(page, QStringLiteral("Link Status")); }

    QLabel& label(const char16_t* name) { return *page->findChild<QLabel*>(QStringView(name).toString()); }
};

TEST_F(LinkStatusPageLayoutTest, NothingIsClippedInASmallWindow)
{
    label(u"Status").setText(QStringLiteral("Connected <--> a name of 32 bytes, just as long <--> 00-11-22-33-44-AB"));
    window.resize(window.minimumSizeHint());
    window.show();
    for (const QLabel* text : page->findChildren<QLabel*>()) {
        EXPECT_GE(text->height(), text->heightForWidth(text->width())) << qPrintable(text->objectName());
        EXPECT_GE(text->width(), text->minimumSizeHint().width()) << qPrintable(text->objectName());
    }
    const auto& plot = *page->findChild<LinkPlot*>();
    EXPECT_GE(plot.height(), plot.minimumSizeHint().height());
}

TEST_F(LinkStatusPageLayoutTest, PlotUsesTheSpaceOfALargeWindow)
{
    window.resize(window.sizeHint());
    window.show();
    const auto& plot = *page->findChild<LinkPlot*>();
    const QSize before = plot.size();
    const int statusHeight = label(u"Status").height();
    window.resize(window.size() + QSize(300, 200));
    window.grab();
    EXPECT_EQ(plot.size(), before + QSize(300, 200));
    EXPECT_EQ(label(u"Status").height(), statusHeight);
}

TEST_F(LinkStatusPageLayoutTest, IndicatorsAreAlignedForAllTexts)
{
    label(u"LinkQuality").setText(QStringLiteral("WEAK 5%"));
    label(u"SignalStrength").setText(QStringLiteral("NORMAL -100 dBm"));
    window.resize(window.sizeHint());
    window.show();
    const auto* const quality = page->findChild<LevelIndicator*>(QStringLiteral("LinkQualityState"));
    const auto* const signal = page->findChild<LevelIndicator*>(QStringLiteral("SignalStrengthState"));
    EXPECT_EQ(quality->x(), signal->x());
    EXPECT_EQ(quality->width(), signal->width());
}

TEST_F(LinkStatusPageLayoutTest, AllFiguresHaveACaptionAndAToolTip)
{
    for (const char16_t* const name : { u"Status", u"CurrentChannel", u"CurrentTxRate", u"ThroughputTx",
             u"ThroughputRx", u"LinkQuality", u"SignalStrength" }) {
        const QLabel& figure = label(name);
        const auto captions = page->findChildren<QLabel*>();
        EXPECT_TRUE(std::any_of(captions.begin(), captions.end(),
            [&figure](const QLabel* caption) { return caption->buddy() == &figure && !caption->text().isEmpty(); }));
        EXPECT_FALSE(figure.toolTip().isEmpty());
        EXPECT_FALSE(figure.accessibleDescription().isEmpty());
    }
    for (const QWidget* const widget :
        std::initializer_list<const QWidget*> { page->findChild<LevelIndicator*>(QStringLiteral("LinkQualityState")),
            page->findChild<LevelIndicator*>(QStringLiteral("SignalStrengthState")), page->findChild<LinkPlot*>() }) {
        EXPECT_FALSE(widget->accessibleName().isEmpty());
        EXPECT_FALSE(widget->toolTip().isEmpty());
    }
}

TEST_F(LinkStatusPageLayoutTest, ScreenReadersGetTheTextAndTheCaptionOfAFigure)
{
    label(u"LinkQuality").setText(QStringLiteral("GOOD 85%"));
    QAccessibleInterface* const figure = QAccessible::queryAccessibleInterface(&label(u"LinkQuality"));
    ASSERT_NE(figure, nullptr);
    EXPECT_EQ(figure->text(QAccessible::Name), u"GOOD 85%");
    const auto relations = figure->relations(QAccessible::Label);
    ASSERT_EQ(relations.size(), 1);
    EXPECT_EQ(relations.front().first->text(QAccessible::Name), u"Link quality:");
}

} // namespace
