#include "survey/ui/ChannelView.h"

#include "tests/survey/ChannelViewNetworks.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QImage>
#include <QSignalSpy>
#include <QTest>
#include <QTextDocument>
#include <QToolTip>
#include <gtest/gtest.h>

#include <cmath>

namespace {

QPalette paletteOf(const QColor& base, const QColor& text)
{
    QPalette palette;
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::Text, text);
    // The selection must not depend on a colour of its own.
    palette.setColor(QPalette::Highlight, text);
    palette.setColor(QPalette::HighlightedText, base);
    return palette;
}

class ChannelViewTest : public testing::Test {
protected:
    ChannelViewTest()
    {
        view.resize(view.sizeHint());
        view.setNetworks(networks);
    }

    [[nodiscard]] QPoint peakOfRow(int row) const
    {
        const ChannelViewModel model { networks, -1, -1 };
        const ChannelViewGeometry geometry(QRectF(view.contentsRect()), view.fontMetrics(), model);
        for (const auto& curve : geometry.curves) {
            if (curve.network->row == row)
                return (curve.peak + QPointF(0, 2)).toPoint();
        }
        return { -1, -1 };
    }

    [[nodiscard]] QList<int> rowsOf(const QSignalSpy& spy) const
    {
        QList<int> rows;
        for (const auto& arguments : spy)
            rows += arguments.first().toInt();
        return rows;
    }

    const std::vector<ChannelViewNetwork> networks { networkOn(0, u"Compass"_qs, 1, 80), networkOn(1, u"Lab"_qs, 6, 80),
        networkOn(2, u"Office"_qs, 13, 80) };
    ChannelView view;
    QSignalSpy selected { &view, &ChannelView::rowSelected };
    QSignalSpy activated { &view, &ChannelView::rowActivated };
};

// How a curve looks on a line half way up its height, in shades of grey.
struct CurveLook {
    double ink; // mean distance from the background inside the curve, 0 to 255
    int stripes; // changes from light to dark inside the curve
    int lineWidth; // pixels of the left outline
};

CurveLook lookOf(const QImage& image, const ChannelViewGeometry& geometry, const ChannelViewGeometry::Curve& curve,
    const QColor& base)
{
    const int y = qRound((curve.peak.y() + geometry.area.bottom()) / 2);
    const double halfWidth = (curve.right - curve.left) / 2 * std::sqrt(0.5); // of a parabola at half its height
    const auto distance = [&](int x) { return std::abs(qGray(image.pixel(x, y)) - qGray(base.rgb())); };
    const int outline = qRound(curve.peak.x() - halfWidth);
    const int margin = 6;
    CurveLook look { 0, 0, 0 };
    for (int x = outline - margin; x < outline + margin / 2; ++x)
        look.lineWidth += distance(x) > 110 ? 1 : 0;
    int count = 0;
    bool wasDark = false;
    for (int x = outline + margin; x < curve.peak.x() + halfWidth - margin; ++x) {
        look.ink += distance(x);
        ++count;
        const bool isDark = distance(x) > 110;
        look.stripes += isDark && !wasDark ? 1 : 0;
        wasDark = isDark;
    }
    look.ink /= count;
    return look;
}

TEST_F(ChannelViewTest, JoinedAndSelectedStandOutWithoutColourOnLightAndDark)
{
    for (const QPalette& palette :
        { paletteOf(Qt::white, Qt::black), paletteOf(QColor(0x23, 0x23, 0x23), Qt::white) }) {
        view.setPalette(palette);
        view.setNetworks(networks, 0);
        view.setSelectedRow(1);
        const QImage image = view.grab().toImage();
        const ChannelViewModel model { networks, 0, 1 };
        const ChannelViewGeometry geometry(QRectF(view.contentsRect()), view.fontMetrics(), model);
        const QColor base = palette.color(QPalette::Base);
        const CurveLook joined = lookOf(image, geometry, geometry.curves[0], base);
        const CurveLook chosen = lookOf(image, geometry, geometry.curves[1], base);
        const CurveLook other = lookOf(image, geometry, geometry.curves[2], base);
        EXPECT_GT(other.lineWidth, 0);
        EXPECT_LT(other.ink, 25);
        EXPECT_EQ(other.stripes, 0);
        EXPECT_GT(joined.ink, 50);
        EXPECT_EQ(joined.stripes, 0);
        EXPECT_GT(joined.lineWidth, other.lineWidth);
        EXPECT_GT(chosen.stripes, 3);
        EXPECT_GT(chosen.lineWidth, other.lineWidth);
    }
}

TEST_F(ChannelViewTest, ASelectionWithoutContrastUsesTheTextColour)
{
    QPalette palette = paletteOf(Qt::white, Qt::black);
    palette.setColor(QPalette::Highlight, QColor(0xf4, 0xf4, 0xf4));
    view.setPalette(palette);
    const QImage before = view.grab().toImage();
    view.setSelectedRow(1);
    const QImage after = view.grab().toImage();
    const QPoint inside = peakOfRow(1) + QPoint(0, view.height() / 4);
    int darker = 0;
    for (int x = inside.x() - 10; x <= inside.x() + 10; ++x)
        darker += qGray(after.pixel(x, inside.y())) < qGray(before.pixel(x, inside.y())) - 100 ? 1 : 0;
    EXPECT_GT(darker, 0);
}

TEST_F(ChannelViewTest, AClickSelectsTheNetwork)
{
    QTest::mouseClick(&view, Qt::LeftButton, {}, peakOfRow(1));
    EXPECT_EQ(view.selectedRow(), 1);
    QTest::mouseClick(&view, Qt::LeftButton, {}, peakOfRow(1));
    QTest::mouseClick(&view, Qt::LeftButton, {}, peakOfRow(2));
    EXPECT_EQ(rowsOf(selected), (QList { 1, 2 }));
}

TEST_F(ChannelViewTest, AClickBesideTheCurvesAndOtherButtonsChangeNothing)
{
    view.setSelectedRow(1);
    QTest::mouseClick(&view, Qt::LeftButton, {}, view.contentsRect().topLeft() + QPoint(1, 1));
    QTest::mouseClick(&view, Qt::RightButton, {}, peakOfRow(2));
    QTest::mouseDClick(&view, Qt::LeftButton, {}, view.contentsRect().topLeft() + QPoint(1, 1));
    EXPECT_EQ(view.selectedRow(), 1);
    EXPECT_TRUE(selected.isEmpty());
    EXPECT_TRUE(activated.isEmpty());
}

TEST_F(ChannelViewTest, ADoubleClickActivatesTheNetwork)
{
    QTest::mouseClick(&view, Qt::LeftButton, {}, peakOfRow(2));
    QTest::mouseDClick(&view, Qt::LeftButton, {}, peakOfRow(2));
    EXPECT_EQ(rowsOf(selected), QList { 2 });
    EXPECT_EQ(rowsOf(activated), QList { 2 });
}

TEST_F(ChannelViewTest, ANewListBetweenTwoClicksActivatesNothing)
{
    QTest::mousePress(&view, Qt::LeftButton, {}, peakOfRow(2));
    view.setNetworks(networks);
    QMouseEvent doubleClick(QEvent::MouseButtonDblClick, peakOfRow(2), view.mapToGlobal(peakOfRow(2)), Qt::LeftButton,
        Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&view, &doubleClick);
    EXPECT_TRUE(activated.isEmpty());
}

TEST_F(ChannelViewTest, TheKeyboardSelectsAndActivates)
{
    for (const Qt::Key key : { Qt::Key_Right, Qt::Key_Right, Qt::Key_End, Qt::Key_Left, Qt::Key_Home, Qt::Key_Down })
        QTest::keyClick(&view, key);
    EXPECT_EQ(rowsOf(selected), (QList { 0, 1, 2, 1, 0, 1 }));
    QTest::keyClick(&view, Qt::Key_Up);
    EXPECT_EQ(view.selectedRow(), 0);
    QTest::keyClick(&view, Qt::Key_Return);
    QTest::keyClick(&view, Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(rowsOf(activated), (QList { 0, 0 }));
}

TEST_F(ChannelViewTest, LeavesKeysToThePageThatMeanNothingHere)
{
    const auto isTaken = [this](int key, Qt::KeyboardModifiers modifiers) {
        QKeyEvent event(QEvent::KeyPress, key, modifiers);
        QCoreApplication::sendEvent(&view, &event);
        return event.isAccepted();
    };
    EXPECT_FALSE(isTaken(Qt::Key_Return, Qt::NoModifier)); // nothing is selected
    EXPECT_FALSE(isTaken(Qt::Key_Right, Qt::ControlModifier));
    EXPECT_FALSE(isTaken(Qt::Key_G, Qt::ControlModifier));
    EXPECT_TRUE(isTaken(Qt::Key_Right, Qt::NoModifier));
    view.setNetworks({});
    EXPECT_FALSE(isTaken(Qt::Key_Right, Qt::NoModifier));
    EXPECT_EQ(rowsOf(selected), QList { 0 });
}

TEST_F(ChannelViewTest, RowsSetByTheProgramEmitNothing)
{
    view.setSelectedRow(2);
    view.setJoinedRow(1);
    EXPECT_EQ(view.selectedRow(), 2);
    view.setNetworks(networks);
    EXPECT_EQ(view.selectedRow(), -1);
    EXPECT_TRUE(selected.isEmpty());
}

TEST_F(ChannelViewTest, ASelectedNetworkThatIsNotDrawnIsNotActivated)
{
    view.setNetworks({ networkOn(0, u"?"_qs, 0, 50), networkOn(1, u"Lab"_qs, 6, 50) });
    view.setSelectedRow(0);
    QTest::keyClick(&view, Qt::Key_Return);
    EXPECT_TRUE(activated.isEmpty());
}

TEST_F(ChannelViewTest, DescribesWhatItShows)
{
    QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(&view);
    ASSERT_NE(accessible, nullptr);
    EXPECT_EQ(accessible->role(), QAccessible::Chart);
    EXPECT_EQ(accessible->text(QAccessible::Name), u"Channels");
    EXPECT_TRUE(accessible->text(QAccessible::Description).startsWith(u"3 networks on 2.4 GHz: "));
    view.setJoinedRow(1);
    EXPECT_TRUE(view.accessibleDescription().contains(u"Lab on channel 6, signal 80, connected"));
    QTest::keyClick(&view, Qt::Key_Home);
    EXPECT_TRUE(view.accessibleDescription().startsWith(u"Selected: Compass on channel 1, signal 80. "));
}

TEST_F(ChannelViewTest, ToolTipsShowNamesAsPlainText)
{
    view.setNetworks({ networkOn(0, u"<b>Lab</b>"_qs, 6, 80) });
    const auto askForToolTip = [this](const QPoint& point) {
        QHelpEvent event(QEvent::ToolTip, point, view.mapToGlobal(point));
        QCoreApplication::sendEvent(&view, &event);
    };
    askForToolTip(peakOfRow(1));
    ASSERT_TRUE(QToolTip::isVisible());
    QTextDocument shown;
    shown.setHtml(QToolTip::text());
    EXPECT_EQ(shown.toPlainText().replace(QChar::Nbsp, u' '), u"<b>Lab</b> on channel 6, signal 80");
    askForToolTip(view.rect().topLeft());
    EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }));
}

TEST_F(ChannelViewTest, ShowsTheEmptyTextWithoutNetworks)
{
    view.setEmptyText(u"No networks in range."_qs);
    EXPECT_FALSE(view.accessibleDescription().contains(u"No networks"));
    view.setNetworks({});
    EXPECT_EQ(view.accessibleDescription(), u"No networks in range.");
    const QImage withText = view.grab().toImage();
    view.setEmptyText({});
    EXPECT_NE(withText, view.grab().toImage());
}

TEST_F(ChannelViewTest, AsksForAnEmptyTextThatChanges)
{
    QString text = u"Searching"_qs;
    view.setNetworks({});
    view.setEmptyTextSource([&text] { return text; });
    const QImage searching = view.grab().toImage();
    text = u"Nothing found"_qs;
    EXPECT_NE(searching, view.grab().toImage());
    view.updateEmptyText();
    EXPECT_EQ(view.accessibleDescription(), u"Nothing found");
}

TEST_F(ChannelViewTest, DrawsAFullListAtAnySize)
{
    view.setNetworks(manyNetworks(), 4);
    view.setSelectedRow(50);
    for (const QSize& size :
        { view.sizeHint(), view.minimumSizeHint(), QSize(1, 1), QSize(3000, 40), QSize(40, 3000) }) {
        view.resize(size);
        EXPECT_FALSE(view.grab().isNull());
    }
}

TEST_F(ChannelViewTest, ShowsThatItHasTheFocus)
{
    QWidget window;
    view.setParent(&window);
    window.resize(view.size());
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    view.clearFocus();
    const QImage without = view.grab().toImage();
    view.setFocus(Qt::MouseFocusReason);
    ASSERT_TRUE(view.hasFocus());
    EXPECT_NE(without, view.grab().toImage());
    view.setParent(nullptr);
}

TEST_F(ChannelViewTest, GrowsWithTheFont)
{
    const QSize before = view.minimumSizeHint();
    QFont font = view.font();
    font.setPointSizeF(font.pointSizeF() * 2);
    view.setFont(font);
    EXPECT_GT(view.minimumSizeHint().width(), before.width());
    EXPECT_GT(view.minimumSizeHint().height(), before.height());
}

} // namespace
