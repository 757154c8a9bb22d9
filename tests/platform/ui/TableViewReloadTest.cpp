#include "tests/platform/ui/TableViewFixture.h"

#include <QLineEdit>
#include <QSignalSpy>

#include <algorithm>
#include <utility>

namespace {

TEST_F(TableViewTest, ReloadPaintsOnlyChanges)
{
    table.reloadData();
    table.selectRowNumber(1);
    show();
    QSignalSpy changed(table.model(), &QAbstractItemModel::dataChanged);
    PaintObserver viewport(*table.viewport());
    table.reloadData();
    QCoreApplication::processEvents();
    EXPECT_EQ(changed.count(), 0);
    EXPECT_EQ(viewport.count, 0);

    source.rows[0].figure = u"10"_qs;
    table.reloadData();
    QCoreApplication::processEvents();
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(viewport.count, 1);
}

QStringList warnings;

// As assistive technology asks for a cell that it has kept.
TEST_F(TableViewTest, CellThatIsGoneHasNoValueAndCausesNoWarning)
{
    source.rows.assign(2, { u"a"_qs, u"1"_qs });
    table.reloadData();
    const QPersistentModelIndex kept = table.model()->index(1, 1);
    ASSERT_EQ(kept.data().toString(), u"a"_qs);
    source.rows.resize(1);
    table.reloadData();
    const QtMessageHandler before = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString& message) { warnings.push_back(message); });
    EXPECT_FALSE(table.model()->data(kept, Qt::AccessibleTextRole).isValid());
    EXPECT_FALSE(table.model()->setData(kept, u"b"_qs));
    qInstallMessageHandler(before);
    EXPECT_EQ(warnings, QStringList());
}

// A signal for a cell that has not changed would overwrite the text of its editor.
TEST_F(TableViewTest, SignalsExactlyTheChangedCells)
{
    source.rows.assign(6, { u"a"_qs, u"1"_qs });
    table.reloadData();
    const QSignalSpy changed(table.model(), &QAbstractItemModel::dataChanged);
    for (const std::size_t row : { 0U, 1U, 2U, 4U, 5U })
        source.rows[row].figure = u"2"_qs;
    source.rows[0].marked = true;
    source.rows[1].marked = true;
    source.rows[2].name = u"b"_qs;
    table.reloadData();
    std::vector<std::pair<int, int>> cells;
    for (const auto& arguments : changed) {
        const auto first = arguments.at(0).toModelIndex();
        const auto last = arguments.at(1).toModelIndex();
        for (int row = first.row(); row <= last.row(); ++row) {
            for (int column = first.column(); column <= last.column(); ++column)
                cells.emplace_back(row, column);
        }
    }
    std::sort(cells.begin(), cells.end());
    const std::vector<std::pair<int, int>> expected { { 0, 0 }, { 0, 2 }, { 1, 0 }, { 1, 2 }, { 2, 1 }, { 2, 2 },
        { 4, 2 }, { 5, 2 } };
    EXPECT_EQ(cells, expected);
}

TEST_F(TableViewTest, ChangeInRowDoesNotOverwriteCellBeingEdited)
{
    table.reloadData();
    show();
    table.setCurrentIndex(table.model()->index(0, 1));
    QTest::keyClick(&table, Qt::Key_F2);
    auto* const cell = table.viewport()->findChild<QLineEdit*>();
    ASSERT_NE(cell, nullptr);
    QTest::keyClicks(cell, u"typed"_qs);
    source.rows[0].marked = true;
    table.reloadData();
    EXPECT_FALSE(table.model()->index(0, 0).data(Qt::DecorationRole).isNull());
    EXPECT_EQ(table.viewport()->findChild<QLineEdit*>(), cell);
    EXPECT_EQ(cell->text(), u"typed"_qs);
    QTest::keyClick(cell, Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([this] { return source.rows[0].name == u"typed"_qs; }));
}

TEST_F(TableViewTest, RemovingRowDiscardsEditInProgress)
{
    table.reloadData();
    show();
    table.selectRowNumber(0);
    table.setCurrentIndex(table.model()->index(0, 1));
    QTest::keyClick(&table, Qt::Key_F2);
    auto* const cell = table.viewport()->findChild<QLineEdit*>();
    ASSERT_NE(cell, nullptr);
    QTest::keyClicks(cell, u"typed"_qs);
    source.rows.clear();
    table.reloadData();
    EXPECT_EQ(table.numberOfRows(), 0);
    EXPECT_EQ(source.stored, 0);
}

TEST_F(TableViewTest, StoresEditedCellByRowNumber)
{
    table.reloadData();
    table.sortByColumn(1, Qt::AscendingOrder);
    EXPECT_TRUE(table.model()->setData(table.model()->index(0, 1), u"zulu"_qs));
    EXPECT_EQ(source.rows[1].name, u"zulu"_qs);
    EXPECT_EQ(textsOf(1).back(), u"zulu"_qs);
    EXPECT_FALSE(table.model()->index(0, 2).flags().testFlag(Qt::ItemIsEditable));
}

TEST_F(TableViewTest, SignalsChangedAlternativeText)
{
    table.reloadData();
    QSignalSpy changed(table.model(), &QAbstractItemModel::dataChanged);
    source.rows[1].mark = u"Marked twice"_qs;
    table.reloadData();
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(table.model()->index(1, 0).data(Qt::AccessibleTextRole).toString(), u"Marked twice"_qs);
}

} // namespace
