#include "platform/ui/TableSortOrder.h"

#include "tests/platform/ui/TableViewFixture.h"

#include <QSettings>
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
        settings.sync();
        QSettings read(path, QSettings::IniFormat);
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
    QString path { directory.filePath(u"settings.ini"_qs) };
    QSettings settings { path, QSettings::IniFormat };
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
    EXPECT_TRUE(settings.allKeys().isEmpty());
}

TEST_F(TableSortOrderTest, RestoringTheOrderDoesNotChangeRowNumbers)
{
    settings.setValue(u"list/sortColumn"_qs, u"figure"_qs);
    settings.setValue(u"list/sortDescending"_qs, true);
    keepSortOrder(table, settings);
    EXPECT_EQ(textsOf(2), (Texts { u"100"_qs, u"20"_qs, u"9"_qs }));
    EXPECT_EQ(table.horizontalHeader()->sortIndicatorSection(), 2);
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {}, middleOf(0));
    EXPECT_EQ(table.selectedRow(), 1);
}

TEST_F(TableSortOrderTest, UnknownColumnKeepsOrderOfSource)
{
    settings.setValue(u"list/sortColumn"_qs, u"renamed"_qs);
    keepSortOrder(table, settings);
    EXPECT_EQ(textsOf(2), inOrderOfSource);
    EXPECT_EQ(table.horizontalHeader()->sortIndicatorSection(), -1);
}

} // namespace
