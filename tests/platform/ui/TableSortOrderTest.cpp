#include "platform/ui/TableSortOrder.h"

#include "platform/store/WindowSettings.h"
#include "tests/platform/ui/TableViewFixture.h"

#include <QTemporaryDir>

namespace {

using Texts = std::vector<QString>;

class TableSortOrderTest : public TableViewTest {
protected:
    TableSortOrderTest()
    {
        table.setObjectName(u"list"_qs);
        table.reloadData();
        show();
    }

    // What a new table shows that keeps its order in the same file.
    [[nodiscard]] Texts figuresAtNextStart()
    {
        WindowSettings read(path);
        TableView next;
        next.setObjectName(u"list"_qs);
        next.setTableColumns(columns());
        next.setDataSource(&source);
        keepSortOrder(next, read);
        next.reloadData();
        Texts texts;
        for (int row = 0; row < next.model()->rowCount(); ++row)
            texts.push_back(next.model()->index(row, 2).data().toString());
        return texts;
    }

    QTemporaryDir directory;
    QString path { directory.filePath(u"settings.plist"_qs) };
    WindowSettings settings { path };
};

const Texts inOrderOfSource { u"9"_qs, u"100"_qs, u"20"_qs };

TEST_F(TableSortOrderTest, ChosenOrderIsThereAtNextStart)
{
    keepSortOrder(table, settings);
    EXPECT_EQ(textsOf(2), inOrderOfSource);
    clickHeader(2);
    EXPECT_EQ(figuresAtNextStart(), (Texts { u"9"_qs, u"20"_qs, u"100"_qs }));
    clickHeader(2);
    EXPECT_EQ(figuresAtNextStart(), (Texts { u"100"_qs, u"20"_qs, u"9"_qs }));
    clickHeader(2);
    EXPECT_EQ(figuresAtNextStart(), inOrderOfSource);
}

TEST_F(TableSortOrderTest, RestoringTheOrderDoesNotChangeRowNumbers)
{
    settings.setText(u"list/sortColumn"_qs, u"figure"_qs);
    settings.setText(u"list/sortDescending"_qs, u"1"_qs);
    keepSortOrder(table, settings);
    EXPECT_EQ(textsOf(2), (Texts { u"100"_qs, u"20"_qs, u"9"_qs }));
    EXPECT_EQ(table.horizontalHeader()->sortIndicatorSection(), 2);
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, middleOf(0));
    EXPECT_EQ(table.selectedRow(), 1);
}

TEST_F(TableSortOrderTest, UnknownColumnKeepsOrderOfSource)
{
    settings.setText(u"list/sortColumn"_qs, u"renamed"_qs);
    keepSortOrder(table, settings);
    EXPECT_EQ(textsOf(2), inOrderOfSource);
    EXPECT_EQ(table.horizontalHeader()->sortIndicatorSection(), -1);
}

} // namespace
