// The rows of the list on the site survey page: their place, their menu and their copies.

#include "tests/survey/ui/SiteSurveyPageFixture.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QScrollBar>
#include <QStackedWidget>

namespace {

using Texts = std::vector<QString>;
using NetworkRowsTest = SiteSurveyPageTest;

class LongListTest : public SiteSurveyPageTest {
protected:
    LongListTest()
    {
        for (std::uint8_t address = 0; address < 28; ++address) // as many as fit in one reply
            entries.emplace_back("net", address);
        haveList(entries);
        letScanFind(entries);
        page.RefreshAPList();
        show();
        EXPECT_FALSE(isInView(joinedRow));
    }

    [[nodiscard]] bool isInView(int row) const
    {
        const QRect cell = table->visualRect(table->model()->index(row, 1));
        return cell.isValid() && table->viewport()->rect().contains(cell.center());
    }

    static constexpr int joinedRow = 25;
    std::vector<EntryBuilder> entries;
    MacAddress joined { 0x00, 0x11, 0x22, 0x33, 0x44, joinedRow };
};

TEST_F(LongListTest, ScrollsToTheJoinedRowOnceWhenItComesUp)
{
    letLinkBeUp(joined);
    page.ProbeConnectStatus();
    EXPECT_TRUE(isInView(joinedRow));
    table->verticalScrollBar()->setValue(0);
    page.ProbeConnectStatus();
    page.RefreshAPList();
    page.ProbeConnectStatus();
    EXPECT_FALSE(isInView(joinedRow)) << "the user has scrolled away";
    letLinkBeDown();
    page.ProbeConnectStatus();
    letLinkBeUp(joined);
    page.ProbeConnectStatus();
    EXPECT_TRUE(isInView(joinedRow)) << "it has come up again";
}

TEST_F(LongListTest, DoesNotScrollAwayFromTheSelectedRow)
{
    table->selectRowNumber(1);
    letLinkBeUp(joined);
    page.ProbeConnectStatus();
    EXPECT_TRUE(isInView(1));
    EXPECT_FALSE(isInView(joinedRow));
    table->deselectAll();
    page.ProbeConnectStatus();
    EXPECT_FALSE(isInView(joinedRow)) << "it came up before";
}

TEST_F(NetworkRowsTest, CopiesTheSelectedRowFromListAndChannelView)
{
    QClipboard& clipboard = *QGuiApplication::clipboard();
    haveList({ EntryBuilder("cafe", 1), EntryBuilder("", 2) });
    page.RefreshAPList();
    show();
    table->setFocus();
    clipboard.setText(u"before"_qs);
    QTest::keyClick(table, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(clipboard.text(), u"before"_qs) << "no row is selected";
    table->selectRowNumber(0);
    QTest::keyClick(table, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(clipboard.text(), u"cafe\t00-11-22-33-44-01\t63\t1\tUnknown\tNot Used\tInfrastructure"_qs);
    table->selectRowNumber(1);
    showChannels->click();
    channels->setFocus();
    QTest::keyClick(channels, Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(clipboard.text().contains(u"00-11-22-33-44-02"_qs));
    status->setText(u"Connected"_qs);
    status->setFocus();
    status->setSelection(0, 4);
    QTest::keyClick(status, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(clipboard.text(), u"Conn"_qs) << "a label copies its own text";
}

TEST_F(NetworkRowsTest, RowHasAMenuWithItsActions)
{
    haveList({ EntryBuilder("a", 1), EntryBuilder("b", 2) });
    page.RefreshAPList();
    show();
    table->setFocus();
    const auto openMenu = [] { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); };
    const auto requestAt = [this](QContextMenuEvent::Reason reason, const QPoint& point) {
        QContextMenuEvent event(reason, point, table->viewport()->mapToGlobal(point));
        QCoreApplication::sendEvent(reason == QContextMenuEvent::Mouse ? table->viewport() : table, &event);
    };
    const QPoint secondRow = table->visualRect(table->model()->index(1, 1)).center();
    requestAt(QContextMenuEvent::Keyboard, secondRow);
    requestAt(QContextMenuEvent::Mouse, QPoint(5, table->viewport()->height() - 5));
    EXPECT_EQ(openMenu(), nullptr) << "neither a selected row nor one under the pointer";
    requestAt(QContextMenuEvent::Mouse, secondRow);
    ASSERT_NE(openMenu(), nullptr);
    EXPECT_EQ(table->selectedRow(), 1);
    Texts actions;
    for (const QAction* const action : openMenu()->actions())
        actions.push_back(action->text());
    EXPECT_EQ(actions,
        (Texts { page.findChild<QPushButton*>(u"Connect"_qs)->text(), u"Add Pro&file…"_qs, QString(), u"Cop&y"_qs }));
    page.RefreshAPList();
    EXPECT_EQ(openMenu(), nullptr) << "the row is gone";
    table->selectRowNumber(1);
    requestAt(QContextMenuEvent::Keyboard, {});
    ASSERT_NE(openMenu(), nullptr);
    EXPECT_TRUE(QRect(table->viewport()->mapToGlobal(QPoint()), table->viewport()->size()).contains(openMenu()->pos()));
    QTest::keyClick(openMenu(), Qt::Key_C); // the letter of Connect
    ASSERT_NE(TaskQueue::GetTaskObject(), nullptr);
    EXPECT_EQ(TaskQueue::GetTaskObject()->Profile()->Bssid, second);
}

TEST_F(NetworkRowsTest, RowCannotBeCopiedWhileASheetRuns)
{
    EntryBuilder secured("home", 2);
    secured.fixedPart.Privacy = 1;
    haveList({ secured });
    page.RefreshAPList();
    show();
    table->selectRowNumber(0);
    QGuiApplication::clipboard()->setText(u"before"_qs);
    sheets.users.emplace_back([this](QDialog& /*sheet*/) {
        QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, {});
        QCoreApplication::sendEvent(table, &event);
        EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
        for (QAction* const action : page.findChild<QStackedWidget*>(u"views"_qs)->actions()) {
            EXPECT_FALSE(action->isEnabled());
            action->trigger();
        }
    });
    page.OnConnect();
    ASSERT_EQ(sheets.shown.size(), 1U);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"before"_qs);
    page.findChild<QStackedWidget*>(u"views"_qs)->actions().constFirst()->trigger();
    EXPECT_TRUE(QGuiApplication::clipboard()->text().startsWith(u"home"_qs));
}

} // namespace
