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

TEST_F(TableViewKeyboardTest, OnlySelectedRowLooksSelected)
{
    const auto expectPaintedAsWithoutFocus = [this](const char* state) {
        table.setFocus();
        ASSERT_EQ(table.selectedRow(), -1);
        const QImage focused = painted();
        table.clearFocus();
        EXPECT_EQ(focused, painted()) << state;
        table.setFocus();
    };
    const QImage unselected = painted();
    ASSERT_TRUE(table.currentIndex().isValid());
    expectPaintedAsWithoutFocus("the first cell is current");
    table.selectionModel()->setCurrentIndex(table.model()->index(2, 1), QItemSelectionModel::NoUpdate);
    expectPaintedAsWithoutFocus("an editable cell is current");
    press(Qt::Key_End);
    EXPECT_NE(painted(), unselected);
    table.reloadData();
    table.deselectAll();
    expectPaintedAsWithoutFocus("the selection was cleared, as by a refresh");
}

TEST_F(TableViewKeyboardTest, ReturnWithoutSelectedRowIsNoOp)
{
    int actions = 0;
    table.setDoubleAction([&actions] { ++actions; });
    ASSERT_TRUE(table.currentIndex().isValid());
    press(Qt::Key_Return);
    table.deselectAll();
    press(Qt::Key_Return);
    EXPECT_EQ(actions, 0);
    EXPECT_EQ(table.selectedRow(), -1);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_EQ(actions, 1);
}

TEST_F(TableViewKeyboardTest, FrameOfTableShowsFocus)
{
    const auto frame = [this] {
        QCoreApplication::processEvents();
        const QImage image = table.grab().toImage();
        return std::pair(image.copy(0, 0, image.width(), 1), image.copy(image.width() - 1, 0, 1, image.height()));
    };
    const auto focused = frame();
    table.clearFocus();
    const auto unfocused = frame();
    EXPECT_NE(focused.first, unfocused.first);
    EXPECT_NE(focused.second, unfocused.second);
    table.setFocus();
    EXPECT_EQ(frame(), focused);
}

TEST_F(TableViewKeyboardTest, FocusRepaintsFrame)
{
    table.clearFocus();
    QCoreApplication::processEvents();
    PaintObserver frame(table);
    table.setFocus();
    QCoreApplication::processEvents();
    EXPECT_TRUE(frame.region.contains(QPoint(0, table.height() / 2)));
    frame.region = {};
    table.clearFocus();
    QCoreApplication::processEvents();
    EXPECT_TRUE(frame.region.contains(QPoint(0, table.height() / 2)));
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
