#include "platform/ui/TableView.h"

#include "platform/ui/Images.h"

#include <QAccessible>
#include <QHeaderView>
#include <QLineEdit>
#include <QPaintEvent>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <utility>
#include <vector>

namespace {

class Source final : public TableDataSource {
public:
    struct Row {
        QString name;
        QString figure;
        bool marked { false };
        QString mark { u"Marked"_qs };
    };

    [[nodiscard]] int numberOfRowsInTableView() const override { return static_cast<int>(rows.size()); }

    [[nodiscard]] QVariant objectValueForTableColumn(QStringView identifier, int row) const override
    {
        const Row& values = rows[static_cast<std::size_t>(row)];
        if (identifier == u"pi")
            return values.marked ? QVariant(imageNamed(u"HANDSHAK")) : QVariant();
        return identifier == u"name" ? values.name : values.figure;
    }

    [[nodiscard]] QString imageTextForTableColumn(QStringView identifier, int row) const override
    {
        return identifier == u"pi" ? rows[static_cast<std::size_t>(row)].mark : QString();
    }

    void setObjectValue(const QVariant& value, QStringView identifier, int row) override
    {
        ASSERT_EQ(identifier, u"name");
        ++stored;
        rows[static_cast<std::size_t>(row)].name = value.toString();
    }

    [[nodiscard]] QString toolTipForTableColumn(QStringView identifier, int row) const override
    {
        return identifier == u"name" ? u"tip %1"_qs.arg(row) : QString();
    }

    std::vector<Row> rows;
    int stored { 0 }; // edited cells
};

class PaintCounter final : public QObject {
public:
    explicit PaintCounter(QWidget& widget) { widget.installEventFilter(this); }
    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        painted += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
    int painted { 0 };
};

class PaintedRegion final : public QObject {
public:
    explicit PaintedRegion(QWidget& widget) { widget.installEventFilter(this); }
    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            region += static_cast<QPaintEvent*>(event)->region();
        return false;
    }
    QRegion region;
};

class TableViewTest : public testing::Test {
protected:
    TableViewTest()
    {
        using Kind = TableColumn::Kind;
        table.setTableColumns({
            { u"pi"_qs, {}, Kind::Image, u"Marked row"_qs },
            { u"name"_qs, u"Name"_qs, Kind::Text, {}, true },
            { u"figure"_qs, u"Figure"_qs, Kind::Number },
        });
        table.setDataSource(&source);
        table.resize(600, 300);
        source.rows = { { u"delta"_qs, u"9"_qs }, { u"alpha"_qs, u"100"_qs, true }, { u"Beta"_qs, u"20"_qs } };
    }

    ~TableViewTest() override { table.setDataSource(nullptr); }
    TableViewTest(const TableViewTest&) = delete;
    TableViewTest& operator=(const TableViewTest&) = delete;
    TableViewTest(TableViewTest&&) = delete;
    TableViewTest& operator=(TableViewTest&&) = delete;

    [[nodiscard]] std::vector<QString> shown(int column) const
    {
        std::vector<QString> texts;
        for (int row = 0; row < table.model()->rowCount(); ++row)
            texts.push_back(table.model()->index(row, column).data().toString());
        return texts;
    }

    void show()
    {
        table.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&table));
        QCoreApplication::processEvents();
    }

    void clickHeader(int column)
    {
        QHeaderView* const header = table.horizontalHeader();
        const QPoint middle(
            header->sectionViewportPosition(column) + header->sectionSize(column) / 2, header->height() / 2);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, middle);
    }

    [[nodiscard]] QPoint middleOf(int viewRow) const
    {
        return table.visualRect(table.model()->index(viewRow, 1)).center();
    }

    [[nodiscard]] QImage painted() { return table.viewport()->grab().toImage(); }

    Source source;
    TableView table;
};

using Texts = std::vector<QString>;

TEST_F(TableViewTest, ShowsWhatTheSourceSays)
{
    EXPECT_EQ(table.numberOfRows(), 0);
    table.reloadData();
    EXPECT_EQ(table.numberOfRows(), 3);
    EXPECT_EQ(shown(1), (Texts { u"delta"_qs, u"alpha"_qs, u"Beta"_qs }));
    EXPECT_EQ(shown(2), (Texts { u"9"_qs, u"100"_qs, u"20"_qs }));
    EXPECT_TRUE(table.model()->index(0, 0).data(Qt::DecorationRole).isNull());
    EXPECT_FALSE(table.model()->index(1, 0).data(Qt::DecorationRole).value<QIcon>().isNull());
    EXPECT_EQ(table.model()->index(2, 1).data(Qt::ToolTipRole).toString(), u"tip 2"_qs);
}

TEST_F(TableViewTest, HeadingAtTheRightIsShownWholeAndApartFromTheNext)
{
    table.reloadData();
    show();
    QHeaderView& header = *table.horizontalHeader();
    const int figure = 2;
    const QString title = u"Figure"_qs;
    const int space = header.fontMetrics().horizontalAdvance(QChar(0x2002));
    EXPECT_GT(space, 0);
    EXPECT_GE(header.sectionSizeHint(figure), header.fontMetrics().horizontalAdvance(title) + space);
    EXPECT_GE(header.sectionSize(figure), header.sectionSizeHint(figure));
    // Nothing is drawn in the space at the end of the heading, whose lower half is free of the header's own lines.
    const int right = header.sectionViewportPosition(figure) + header.sectionSize(figure);
    const QImage image = header.viewport()->grab().toImage();
    const int middle = header.height() / 2;
    const QRgb background = image.pixel(right - space / 2, middle);
    for (int x = right - space; x < right - 2; ++x)
        EXPECT_EQ(image.pixel(x, middle), background) << x;
}

TEST_F(TableViewTest, SortsByAHeaderUpThenDownThenNotAtAll)
{
    table.reloadData();
    show();
    clickHeader(2);
    EXPECT_EQ(shown(2), (Texts { u"9"_qs, u"20"_qs, u"100"_qs }));
    clickHeader(2);
    EXPECT_EQ(shown(2), (Texts { u"100"_qs, u"20"_qs, u"9"_qs }));
    clickHeader(2);
    EXPECT_EQ(shown(2), (Texts { u"9"_qs, u"100"_qs, u"20"_qs }));
    clickHeader(1);
    EXPECT_EQ(shown(1), (Texts { u"alpha"_qs, u"Beta"_qs, u"delta"_qs }));
    clickHeader(0);
    EXPECT_EQ(shown(1), (Texts { u"alpha"_qs, u"delta"_qs, u"Beta"_qs }));
}

TEST_F(TableViewTest, LeavesEqualRowsInTheSourcesOrderBothWays)
{
    source.rows = { { u"b"_qs, u"1"_qs }, { u"a"_qs, u"1"_qs }, { u"c"_qs, u"2"_qs } };
    table.reloadData();
    table.sortByColumn(1, Qt::DescendingOrder);
    table.sortByColumn(2, Qt::AscendingOrder);
    EXPECT_EQ(shown(1), (Texts { u"b"_qs, u"a"_qs, u"c"_qs }));
    table.sortByColumn(2, Qt::DescendingOrder);
    EXPECT_EQ(shown(1), (Texts { u"c"_qs, u"b"_qs, u"a"_qs }));
}

TEST_F(TableViewTest, KeepsSortingRowsThatChangeAndCome)
{
    table.reloadData();
    table.sortByColumn(2, Qt::AscendingOrder);
    source.rows[1].figure = u"1"_qs;
    source.rows.push_back({ u"new"_qs, u"10"_qs });
    table.reloadData();
    EXPECT_EQ(shown(2), (Texts { u"1"_qs, u"9"_qs, u"10"_qs, u"20"_qs }));
}

TEST_F(TableViewTest, CountsRowsAsTheSourceDoesWhileSorted)
{
    table.reloadData();
    table.sortByColumn(1, Qt::AscendingOrder);
    show();
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, middleOf(0));
    EXPECT_EQ(table.selectedRow(), 1);
    table.selectRowNumber(0);
    EXPECT_EQ(table.selectionModel()->selectedRows().first().row(), 2);
}

TEST_F(TableViewTest, SelectsOneRowOrNone)
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

TEST_F(TableViewTest, KeepsTheSelectedRowNumberAcrossAReload)
{
    table.reloadData();
    table.sortByColumn(2, Qt::DescendingOrder);
    table.selectRowNumber(1);
    source.rows = { { u"x"_qs, u"1"_qs }, { u"y"_qs, u"2"_qs } };
    table.reloadData();
    EXPECT_EQ(table.selectedRow(), 1);
}

TEST_F(TableViewTest, SelectsNothingWhenTheSelectedRowGoes)
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

TEST_F(TableViewTest, PaintsNothingWhenAReloadChangesNothing)
{
    table.reloadData();
    table.selectRowNumber(1);
    show();
    QSignalSpy changed(table.model(), &QAbstractItemModel::dataChanged);
    PaintCounter viewport(*table.viewport());
    table.reloadData();
    QCoreApplication::processEvents();
    EXPECT_EQ(changed.count(), 0);
    EXPECT_EQ(viewport.painted, 0);

    source.rows[0].figure = u"10"_qs;
    table.reloadData();
    QCoreApplication::processEvents();
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(viewport.painted, 1);
}

TEST_F(TableViewTest, AnnouncesEachRunOfChangedRowsOnce)
{
    source.rows.assign(6, { u"a"_qs, u"1"_qs });
    table.reloadData();
    QSignalSpy changed(table.model(), &QAbstractItemModel::dataChanged);
    for (const std::size_t row : { 0U, 1U, 4U, 5U })
        source.rows[row].figure = u"2"_qs;
    table.reloadData();
    ASSERT_EQ(changed.count(), 2);
    EXPECT_EQ(changed.at(0).at(0).toModelIndex().row(), 0);
    EXPECT_EQ(changed.at(0).at(1).toModelIndex().row(), 1);
    EXPECT_EQ(changed.at(1).at(0).toModelIndex().row(), 4);
    EXPECT_EQ(changed.at(1).at(1).toModelIndex().row(), 5);
}

TEST_F(TableViewTest, AnnouncesTheCellsThatChangedAndNotTheirNeighbours)
{
    source.rows.assign(3, { u"a"_qs, u"1"_qs });
    table.reloadData();
    QSignalSpy changed(table.model(), &QAbstractItemModel::dataChanged);
    source.rows[0].marked = true;
    source.rows[0].figure = u"2"_qs;
    source.rows[1].marked = true;
    source.rows[1].figure = u"3"_qs;
    source.rows[2].name = u"b"_qs;
    source.rows[2].figure = u"4"_qs;
    table.reloadData();
    std::vector<QRect> announced;
    for (const auto& arguments : changed) {
        const auto first = arguments.at(0).toModelIndex();
        const auto last = arguments.at(1).toModelIndex();
        announced.emplace_back(QPoint(first.column(), first.row()), QPoint(last.column(), last.row()));
    }
    EXPECT_EQ(announced, (std::vector<QRect> { { 0, 0, 1, 2 }, { 2, 0, 1, 2 }, { 1, 2, 2, 1 } }));
}

TEST_F(TableViewTest, MarkThatComesLeavesWhatIsBeingTypedInItsRow)
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

TEST_F(TableViewTest, RowThatGoesAwayTakesWhatIsBeingTypedWithIt)
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

TEST_F(TableViewTest, SendsItsActionForADoubleClickAndForReturn)
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

TEST_F(TableViewTest, StoresAnEditedCellUnderItsRowNumber)
{
    table.reloadData();
    table.sortByColumn(1, Qt::AscendingOrder);
    EXPECT_TRUE(table.model()->setData(table.model()->index(0, 1), u"zulu"_qs));
    EXPECT_EQ(source.rows[1].name, u"zulu"_qs);
    EXPECT_EQ(shown(1).back(), u"zulu"_qs);
    EXPECT_FALSE(table.model()->index(0, 2).flags().testFlag(Qt::ItemIsEditable));
}

TEST_F(TableViewTest, SaysWhyItIsEmptyWhileItIs)
{
    show();
    const QImage nothing = painted();
    table.setEmptyText(u"Nothing here."_qs);
    EXPECT_NE(painted(), nothing);
    EXPECT_EQ(table.accessibleDescription(), u"Nothing here."_qs);
    table.reloadData();
    const QImage rows = painted();
    EXPECT_EQ(table.accessibleDescription(), QString());
    table.setEmptyText(QString());
    EXPECT_EQ(painted(), rows);
    table.setEmptyText(u"Nothing here."_qs);
    source.rows.clear();
    table.reloadData();
    EXPECT_NE(painted(), nothing);
    EXPECT_EQ(table.accessibleDescription(), u"Nothing here."_qs);
}

TEST_F(TableViewTest, AsksForItsEmptyTextWheneverItIsPainted)
{
    show();
    QString reason = u"Not yet."_qs;
    table.setEmptyTextSource([&reason] { return reason; });
    const QImage before = painted();
    reason = u"Still nothing."_qs;
    EXPECT_NE(painted(), before);
    EXPECT_EQ(table.emptyText(), u"Still nothing."_qs);
    table.updateEmptyText();
    EXPECT_EQ(table.accessibleDescription(), u"Still nothing."_qs);
}

TEST_F(TableViewTest, PaintsTheWholeTextAnewWhenItHasChangedBehindAPartThatIsPainted)
{
    show();
    QString reason = u"Not yet."_qs;
    table.setEmptyTextSource([&reason] { return reason; });
    QCoreApplication::processEvents();
    PaintCounter counter(*table.viewport());
    table.viewport()->repaint(0, 0, 1, 1);
    QCoreApplication::processEvents();
    EXPECT_EQ(counter.painted, 1);
    reason = u"Still nothing."_qs;
    table.viewport()->repaint(0, 0, 1, 1);
    QTRY_COMPARE(counter.painted, 3);
}

TEST_F(TableViewTest, NamesHeadersAndImagesForThoseWhoDoNotSeeThem)
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

TEST_F(TableViewTest, AnnouncesAnImageThatSaysSomethingElseNow)
{
    table.reloadData();
    QSignalSpy changed(table.model(), &QAbstractItemModel::dataChanged);
    source.rows[1].mark = u"Marked twice"_qs;
    table.reloadData();
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(table.model()->index(1, 0).data(Qt::AccessibleTextRole).toString(), u"Marked twice"_qs);
}

TEST_F(TableViewTest, WidensAColumnToItsContents)
{
    table.reloadData();
    const int before = table.columnWidth(1);
    source.rows[0].name = QString(60, u'm');
    table.reloadData();
    EXPECT_GE(table.columnWidth(1), table.fontMetrics().horizontalAdvance(source.rows[0].name));
    source.rows[0].name = u"delta"_qs;
    table.reloadData();
    EXPECT_EQ(table.columnWidth(1), before);
}

TEST_F(TableViewTest, KeepsItsWidthsWhileItIsEmptyAndThoseTheUserChose)
{
    source.rows[0].name = QString(40, u'm');
    table.reloadData();
    const int wide = table.columnWidth(1);
    const auto rows = source.rows;
    source.rows.clear();
    table.reloadData();
    EXPECT_EQ(table.columnWidth(1), wide);

    source.rows = rows;
    table.reloadData();
    show();
    QHeaderView* const header = table.horizontalHeader();
    const int edge = header->sectionViewportPosition(1) + header->sectionSize(1) - 1;
    const int y = header->height() / 2;
    QTest::mousePress(header->viewport(), Qt::LeftButton, {}, QPoint(edge, y));
    QTest::mouseMove(header->viewport(), QPoint(edge - 100, y));
    QTest::mouseRelease(header->viewport(), Qt::LeftButton, {}, QPoint(edge - 100, y));
    const int chosen = table.columnWidth(1);
    EXPECT_EQ(chosen, wide - 100);
    source.rows[0].name = QString(80, u'm');
    table.reloadData();
    EXPECT_EQ(table.columnWidth(1), chosen);
}

TEST_F(TableViewTest, LeavesTheTabKeyToTheWindow)
{
    EXPECT_FALSE(table.tabKeyNavigation());
}

TEST_F(TableViewTest, ShowsAPictureInTheMiddleOfItsColumn)
{
    table.reloadData();
    table.setColumnWidth(0, 80);
    show();
    const QRect cell = table.visualRect(table.model()->index(1, 0));
    QRect drawn;
    const QImage image = painted();
    const QRgb background = image.pixel(cell.topLeft() + QPoint(1, 1));
    for (int y = cell.top(); y <= cell.bottom(); ++y) {
        for (int x = cell.left(); x <= cell.right(); ++x) {
            if (image.pixel(x, y) != background)
                drawn |= QRect(x, y, 1, 1);
        }
    }
    ASSERT_GT(drawn.width(), 4);
    const int iconSize = table.style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, &table);
    EXPECT_LE(drawn.width(), iconSize);
    EXPECT_LE(drawn.height(), iconSize);
    EXPECT_LE(std::abs(drawn.left() - cell.left() - (cell.right() - drawn.right())), 1);
    EXPECT_LE(
        std::abs(drawn.top() - cell.top() - (cell.bottom() - drawn.bottom())), 4); // the hands are not in the middle
}

// The keyboard comes to the table, and nothing is selected yet.
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

TEST_F(TableViewKeyboardTest, ComingToTheTableSelectsNothing)
{
    ASSERT_TRUE(table.hasFocus());
    EXPECT_EQ(table.selectedRow(), -1);
}

TEST_F(TableViewKeyboardTest, RowThatTheKeyboardIsInShowsItInItsWholeLength)
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

TEST_F(TableViewKeyboardTest, NoLineIsDrawnBetweenTheCellsOfASelectedRow)
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

TEST_F(TableViewKeyboardTest, CellThatTheEditKeyWouldOpenShowsItItself)
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

TEST_F(TableViewKeyboardTest, PaintsTheWholeRowThatTheKeyboardComesToAndLeaves)
{
    QCoreApplication::processEvents();
    PaintedRegion viewport(*table.viewport());
    table.selectionModel()->setCurrentIndex(table.model()->index(2, 0), QItemSelectionModel::NoUpdate);
    QCoreApplication::processEvents();
    for (const int row : { 0, 2 }) {
        for (const int column : { 0, 1, 2 })
            EXPECT_TRUE(viewport.region.contains(table.visualRect(table.model()->index(row, column)).center()))
                << row << ' ' << column;
    }
    EXPECT_FALSE(viewport.region.contains(middleOf(1)));
}

TEST_F(TableViewKeyboardTest, SpaceSelectsTheRowThatTheKeyboardIsIn)
{
    press(Qt::Key_Space);
    EXPECT_EQ(table.selectedRow(), 0);
    press(Qt::Key_Down);
    table.deselectAll();
    press(Qt::Key_Space);
    EXPECT_EQ(table.selectedRow(), 0) << "no row was current";
}

TEST_F(TableViewKeyboardTest, AnyFirstMoveSelectsTheOnlyRow)
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

TEST_F(TableViewKeyboardTest, HomeAndEndSelectTheFirstAndTheLastRow)
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

TEST_F(TableViewKeyboardTest, HomeAndEndStayInTheirColumnUnlessTheyGoToTheCorners)
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

TEST_F(TableViewKeyboardTest, AnyFirstMoveSelectsARowAndPassesOverNone)
{
    for (const Qt::Key key : { Qt::Key_Down, Qt::Key_Up, Qt::Key_Left, Qt::Key_Right, Qt::Key_PageUp, Qt::Key_Home }) {
        table.selectionModel()->setCurrentIndex(table.model()->index(0, 0), QItemSelectionModel::Clear);
        press(key);
        EXPECT_EQ(table.selectedRow(), 0) << key;
    }
    press(Qt::Key_Down);
    EXPECT_EQ(table.selectedRow(), 1);
}

TEST_F(TableViewKeyboardTest, MovesInTheOrderThatIsShown)
{
    table.sortByColumn(2, Qt::DescendingOrder); // 100, 20, 9
    press(Qt::Key_Home);
    EXPECT_EQ(table.selectedRow(), 1);
    press(Qt::Key_End);
    EXPECT_EQ(table.selectedRow(), 0);
}

TEST_F(TableViewKeyboardTest, AFirstMoveAfterTheSelectionWasTakenAwayStartsAtTheTop)
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

TEST_F(TableViewKeyboardTest, DoesNothingInAnEmptyTable)
{
    source.rows.clear();
    table.reloadData();
    for (const Qt::Key key : { Qt::Key_Home, Qt::Key_End, Qt::Key_Down, Qt::Key_Space, Qt::Key_A })
        press(key);
    EXPECT_EQ(table.selectedRow(), -1);
}

TEST_F(TableViewKeyboardTest, TypingFindsANameWhateverCellIsCurrent)
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

TEST_F(TableViewKeyboardTest, KeysOfAnEditorAreNotTheTables)
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
