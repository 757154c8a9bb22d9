#include "tests/platform/ui/TableViewFixture.h"

#include <QAccessible>

namespace {

using Texts = std::vector<QString>;

TEST_F(TableViewTest, ShowsContentsOfSource)
{
    EXPECT_EQ(table.numberOfRows(), 0);
    table.reloadData();
    EXPECT_EQ(table.numberOfRows(), 3);
    EXPECT_EQ(textsOf(1), (Texts { u"delta"_qs, u"alpha"_qs, u"Beta"_qs }));
    EXPECT_EQ(textsOf(2), (Texts { u"9"_qs, u"100"_qs, u"20"_qs }));
    EXPECT_TRUE(table.model()->index(0, 0).data(Qt::DecorationRole).isNull());
    EXPECT_FALSE(table.model()->index(1, 0).data(Qt::DecorationRole).value<QIcon>().isNull());
    EXPECT_EQ(table.model()->index(2, 1).data(Qt::ToolTipRole).toString(), u"tip 2"_qs);
}

TEST_F(TableViewTest, HeaderClicksSortAscendingThenDescendingThenNotAtAll)
{
    table.reloadData();
    show();
    clickHeader(2);
    EXPECT_EQ(textsOf(2), (Texts { u"9"_qs, u"20"_qs, u"100"_qs }));
    clickHeader(2);
    EXPECT_EQ(textsOf(2), (Texts { u"100"_qs, u"20"_qs, u"9"_qs }));
    clickHeader(2);
    EXPECT_EQ(textsOf(2), (Texts { u"9"_qs, u"100"_qs, u"20"_qs }));
    clickHeader(1);
    EXPECT_EQ(textsOf(1), (Texts { u"alpha"_qs, u"Beta"_qs, u"delta"_qs }));
    clickHeader(0);
    EXPECT_EQ(textsOf(1), (Texts { u"alpha"_qs, u"delta"_qs, u"Beta"_qs }));
}

TEST_F(TableViewTest, EqualRowsKeepOrderOfSourceInBothDirections)
{
    source.rows = { { u"b"_qs, u"1"_qs }, { u"a"_qs, u"1"_qs }, { u"c"_qs, u"2"_qs } };
    table.reloadData();
    table.sortByColumn(1, Qt::DescendingOrder);
    table.sortByColumn(2, Qt::AscendingOrder);
    EXPECT_EQ(textsOf(1), (Texts { u"b"_qs, u"a"_qs, u"c"_qs }));
    table.sortByColumn(2, Qt::DescendingOrder);
    EXPECT_EQ(textsOf(1), (Texts { u"c"_qs, u"b"_qs, u"a"_qs }));
}

TEST_F(TableViewTest, SortsChangedAndNewRows)
{
    table.reloadData();
    table.sortByColumn(2, Qt::AscendingOrder);
    source.rows[1].figure = u"1"_qs;
    source.rows.push_back({ u"new"_qs, u"10"_qs });
    table.reloadData();
    EXPECT_EQ(textsOf(2), (Texts { u"1"_qs, u"9"_qs, u"10"_qs, u"20"_qs }));
}

TEST_F(TableViewTest, RowNumbersDoNotDependOnSorting)
{
    table.reloadData();
    table.sortByColumn(1, Qt::AscendingOrder);
    show();
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, middleOf(0));
    EXPECT_EQ(table.selectedRow(), 1);
    table.selectRowNumber(0);
    EXPECT_EQ(table.selectionModel()->selectedRows().first().row(), 2);
}

TEST_F(TableViewTest, SelectsAtMostOneRow)
{
    table.reloadData();
    EXPECT_EQ(table.selectedRow(), -1);
    table.selectRowNumber(2);
    EXPECT_EQ(table.selectedRow(), 2);
    table.selectRowNumber(1);
    EXPECT_EQ(table.selectedRow(), 1);
    table.deselectAll();
    EXPECT_EQ(table.selectedRow(), -1);
    table.selectRowNumber(0);
    table.selectRowNumber(3);
    EXPECT_EQ(table.selectedRow(), -1);
}

TEST_F(TableViewTest, ReloadKeepsSelectedRowNumber)
{
    table.reloadData();
    table.sortByColumn(2, Qt::DescendingOrder);
    table.selectRowNumber(1);
    source.rows = { { u"x"_qs, u"1"_qs }, { u"y"_qs, u"2"_qs } };
    table.reloadData();
    EXPECT_EQ(table.selectedRow(), 1);
}

TEST_F(TableViewTest, RemovingSelectedRowClearsSelection)
{
    table.reloadData();
    table.selectRowNumber(2);
    source.rows.pop_back();
    table.reloadData();
    EXPECT_EQ(table.selectedRow(), -1);
    table.selectRowNumber(0);
    source.rows.clear();
    table.reloadData();
    EXPECT_EQ(table.selectedRow(), -1);
}

TEST_F(TableViewTest, DoubleClickAndReturnTriggerDoubleAction)
{
    table.reloadData();
    show();
    std::vector<int> rows;
    table.setDoubleAction([this, &rows] { rows.push_back(table.selectedRow()); });
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, middleOf(2));
    QTest::mouseDClick(table.viewport(), Qt::LeftButton, {}, middleOf(2));
    EXPECT_EQ(rows, std::vector<int> { 2 });
    QTest::keyClick(&table, Qt::Key_Up);
    QTest::keyClick(&table, Qt::Key_Return);
    QTest::keyClick(&table, Qt::Key_Enter);
    EXPECT_EQ(rows, (std::vector<int> { 2, 1, 1 }));
    table.deselectAll();
    QTest::keyClick(&table, Qt::Key_Return);
    EXPECT_EQ(rows.size(), 3U);
}

TEST_F(TableViewTest, HeadersAndImagesHaveAccessibleNames)
{
    table.reloadData();
    EXPECT_EQ(table.model()->headerData(0, Qt::Horizontal, Qt::AccessibleTextRole).toString(), u"Marked row"_qs);
    EXPECT_EQ(table.model()->headerData(1, Qt::Horizontal, Qt::AccessibleTextRole).toString(), u"Name"_qs);
    QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(&table);
    ASSERT_NE(accessible, nullptr);
    ASSERT_NE(accessible->tableInterface(), nullptr);
    EXPECT_EQ(accessible->tableInterface()->cellAt(0, 1)->text(QAccessible::Name), u"delta"_qs);
    EXPECT_EQ(accessible->tableInterface()->columnDescription(2), u"Figure"_qs);
    EXPECT_EQ(accessible->tableInterface()->cellAt(1, 0)->text(QAccessible::Name), u"Marked"_qs);
    EXPECT_EQ(accessible->tableInterface()->cellAt(0, 0)->text(QAccessible::Name), QString()) << "no image";
}

} // namespace
