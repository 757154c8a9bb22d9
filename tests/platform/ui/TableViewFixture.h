#pragma once

#include "platform/ui/Images.h"
#include "platform/ui/TableView.h"

#include <QHeaderView>
#include <QPaintEvent>
#include <QTest>
#include <gtest/gtest.h>

#include <vector>

class RowSource final : public TableDataSource {
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
    int stored { 0 }; // number of edited cells
};

// Records the paint events of a widget.
class PaintObserver final : public QObject {
public:
    explicit PaintObserver(QWidget& widget) { widget.installEventFilter(this); }
    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            ++count;
            region += static_cast<QPaintEvent*>(event)->region();
        }
        return false;
    }

    int count { 0 };
    QRegion region;
};

// A table with an image, an editable text and a number column, and three rows that are not loaded yet.
class TableViewTest : public testing::Test {
    Q_DISABLE_COPY_MOVE(TableViewTest)

protected:
    TableViewTest()
    {
        table.setTableColumns(columns());
        table.setDataSource(&source);
        table.resize(600, 300);
        source.rows = { { u"delta"_qs, u"9"_qs }, { u"alpha"_qs, u"100"_qs, true }, { u"Beta"_qs, u"20"_qs } };
    }

    ~TableViewTest() override { table.setDataSource(nullptr); }

    [[nodiscard]] static std::vector<TableColumn> columns()
    {
        using Kind = TableColumn::Kind;
        return {
            { u"pi"_qs, {}, Kind::Image, u"Marked row"_qs },
            { u"name"_qs, u"Name"_qs, Kind::Text, {}, true },
            { u"figure"_qs, u"Figure"_qs, Kind::Number },
        };
    }

    [[nodiscard]] std::vector<QString> textsOf(int column) const
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

    RowSource source;
    TableView table;
};
