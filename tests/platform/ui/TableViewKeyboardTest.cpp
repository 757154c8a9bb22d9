#include "tests/platform/ui/TableViewFixture.h"

#include <QLineEdit>

#include <utility>

namespace {

// The table has the focus, and nothing is selected.
class TableViewKeyboardTest : public TableViewTest {
protected:
    TableViewKeyboardTest()
    {
        table.reloadData();
        show();
        table.setFocus();
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(&table, key, modifiers); }
};

TEST_F(TableViewKeyboardTest, TabKeyLeavesTable)
{
    EXPECT_FALSE(table.tabKeyNavigation());
}

TEST_F(TableViewKeyboardTest, FocusDoesNotSelect)
{
    ASSERT_TRUE(table.hasFocus());
    EXPECT_EQ(table.selectedRow(), -1);
}

TEST_F(TableViewKeyboardTest, FocusFrameSurroundsWholeRow)
{
    const auto ends = [this](int row) {
        const QRect first = table.visualRect(table.model()->index(row, 0));
        const QRect last = table.visualRect(table.model()->index(row, 2));
        const QImage image = painted();
        return std::pair(image.copy(QRect(first.topLeft(), QSize(4, first.height()))),
            image.copy(QRect(last.topRight() - QPoint(3, 0), QSize(4, last.height()))));
    };
    ASSERT_TRUE(table.hasFocus());
    ASSERT_EQ(table.currentIndex(), table.model()->index(0, 0));
    const auto focused = ends(0);
    table.selectionModel()->setCurrentIndex(table.model()->index(2, 2), QItemSelectionModel::NoUpdate);
    const auto left = ends(0);
    const auto reached = ends(2);
    table.clearFocus();
    EXPECT_NE(focused.first, left.first);
    EXPECT_NE(focused.second, left.second);
    EXPECT_NE(reached.first, ends(2).first);
    EXPECT_NE(reached.second, ends(2).second);
    EXPECT_EQ(ends(0), left);
    table.setFocus();
    table.deselectAll();
    QCoreApplication::processEvents();
    EXPECT_EQ(ends(0), focused) << "the row that the next key goes to";
}

TEST_F(TableViewKeyboardTest, SelectedRowHasNoLinesBetweenCells)
{
    press(Qt::Key_Home);
    ASSERT_EQ(table.currentIndex(), table.model()->index(0, 0));
    const QRect cell = table.visualRect(table.currentIndex());
    const QRect inside = QRect(cell.center().x(), cell.top() + 3, cell.width() / 2 + 6, cell.height() - 6);
    const QImage image = painted();
    for (int y = inside.top(); y <= inside.bottom(); ++y) {
        for (int x = inside.left(); x <= cell.right(); ++x)
            ASSERT_EQ(image.pixel(x, y), image.pixel(inside.topLeft())) << x << ' ' << y;
    }
}

TEST_F(TableViewKeyboardTest, EditableCurrentCellHasItsOwnFocusFrame)
{
    const auto cellImage = [this](int column) {
        return painted().copy(table.visualRect(table.model()->index(0, column)).adjusted(4, 0, -4, 0));
    };
    press(Qt::Key_Home);
    table.selectionModel()->setCurrentIndex(table.model()->index(0, 1), QItemSelectionModel::NoUpdate);
    const QImage current = cellImage(1);
    const QImage neighbour = cellImage(2);
    table.clearFocus();
    EXPECT_NE(current, cellImage(1));
    EXPECT_EQ(neighbour, cellImage(2));
}

TEST_F(TableViewKeyboardTest, FocusChangeRepaintsBothRows)
{
    QCoreApplication::processEvents();
    PaintObserver viewport(*table.viewport());
    table.selectionModel()->setCurrentIndex(table.model()->index(2, 0), QItemSelectionModel::NoUpdate);
    QCoreApplication::processEvents();
    for (const int row : { 0, 2 }) {
        for (const int column : { 0, 1, 2 })
            EXPECT_TRUE(viewport.region.contains(table.visualRect(table.model()->index(row, column)).center()))
                << row << ' ' << column;
    }
    EXPECT_FALSE(viewport.region.contains(middleOf(1)));
}

TEST_F(TableViewKeyboardTest, SpaceSelectsCurrentRow)
{
    press(Qt::Key_Space);
    EXPECT_EQ(table.selectedRow(), 0);
    press(Qt::Key_Down);
    table.deselectAll();
    press(Qt::Key_Space);
    EXPECT_EQ(table.selectedRow(), 0) << "no row was current";
}

TEST_F(TableViewKeyboardTest, FirstCursorKeySelectsOnlyRow)
{
    source.rows.resize(1);
    table.reloadData();
    for (const Qt::Key key : { Qt::Key_Down, Qt::Key_Up, Qt::Key_Space, Qt::Key_Home, Qt::Key_End, Qt::Key_PageDown }) {
        table.selectionModel()->setCurrentIndex(table.model()->index(0, 0), QItemSelectionModel::Clear);
        ASSERT_EQ(table.selectedRow(), -1);
        press(key);
        EXPECT_EQ(table.selectedRow(), 0) << key;
    }
}

TEST_F(TableViewKeyboardTest, HomeAndEndSelectFirstAndLastRow)
{
    press(Qt::Key_Home);
    EXPECT_EQ(table.selectedRow(), 0);
    press(Qt::Key_End);
    EXPECT_EQ(table.selectedRow(), 2);
    press(Qt::Key_Home);
    EXPECT_EQ(table.selectedRow(), 0);
    table.deselectAll();
    press(Qt::Key_End);
    EXPECT_EQ(table.selectedRow(), 2);
    table.deselectAll();
    press(Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(table.selectedRow(), 2);
    table.deselectAll();
    press(Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(table.selectedRow(), 0);
}

TEST_F(TableViewKeyboardTest, HomeAndEndStayInColumnUnlessWithCtrl)
{
    press(Qt::Key_Home);
    press(Qt::Key_Right);
    press(Qt::Key_End);
    EXPECT_EQ(table.currentIndex(), table.model()->index(2, 1));
    press(Qt::Key_Home);
    EXPECT_EQ(table.currentIndex(), table.model()->index(0, 1));
    press(Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(table.currentIndex(), table.model()->index(2, 2));
    press(Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(table.currentIndex(), table.model()->index(0, 0));
}

TEST_F(TableViewKeyboardTest, FirstCursorKeySelectsFirstRow)
{
    for (const Qt::Key key : { Qt::Key_Down, Qt::Key_Up, Qt::Key_Left, Qt::Key_Right, Qt::Key_PageUp, Qt::Key_Home }) {
        table.selectionModel()->setCurrentIndex(table.model()->index(0, 0), QItemSelectionModel::Clear);
        press(key);
        EXPECT_EQ(table.selectedRow(), 0) << key;
    }
    press(Qt::Key_Down);
    EXPECT_EQ(table.selectedRow(), 1);
}

TEST_F(TableViewKeyboardTest, MovesInDisplayedOrder)
{
    table.sortByColumn(2, Qt::DescendingOrder); // 100, 20, 9
    press(Qt::Key_Home);
    EXPECT_EQ(table.selectedRow(), 1);
    press(Qt::Key_End);
    EXPECT_EQ(table.selectedRow(), 0);
}

TEST_F(TableViewKeyboardTest, FirstCursorKeyAfterDeselectionSelectsFirstRow)
{
    press(Qt::Key_End);
    table.reloadData();
    EXPECT_EQ(table.selectedRow(), 2);
    table.deselectAll();
    table.reloadData();
    EXPECT_EQ(table.selectedRow(), -1);
    press(Qt::Key_Down);
    EXPECT_EQ(table.selectedRow(), 0);
}

TEST_F(TableViewKeyboardTest, KeysInEmptyTableAreNoOps)
{
    source.rows.clear();
    table.reloadData();
    for (const Qt::Key key : { Qt::Key_Home, Qt::Key_End, Qt::Key_Down, Qt::Key_Space, Qt::Key_A })
        press(key);
    EXPECT_EQ(table.selectedRow(), -1);
}

TEST_F(TableViewKeyboardTest, TypingSearchesFirstTextColumnFromAnyCell)
{
    source.rows.push_back({ u"dome"_qs, u"alpha"_qs });
    table.reloadData();
    QTest::keyClicks(&table, u"d"_qs); // the first one too, while nothing is selected
    EXPECT_EQ(table.selectedRow(), 0);
    QTest::keyClicks(&table, u"o"_qs);
    EXPECT_EQ(table.selectedRow(), 3);
    press(Qt::Key_Right);
    table.deselectAll();
    QTest::keyClicks(&table, u"alp"_qs);
    EXPECT_EQ(table.selectedRow(), -1); // still the same search: "doalp"
    EXPECT_FALSE(table.currentIndex().isValid());
}

TEST_F(TableViewKeyboardTest, EditorHandlesItsOwnKeys)
{
    press(Qt::Key_Home);
    press(Qt::Key_Right);
    press(Qt::Key_Down);
    press(Qt::Key_F2);
    auto* const editor = table.findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    QTest::keyClick(editor, Qt::Key_Home);
    QTest::keyClick(editor, Qt::Key_X);
    QTest::keyClick(editor, Qt::Key_Return);
    QCoreApplication::processEvents(); // the delegate takes the text when the key is over
    EXPECT_EQ(source.rows[1].name, u"xalpha"_qs);
    EXPECT_EQ(table.selectedRow(), 1);
}

} // namespace
