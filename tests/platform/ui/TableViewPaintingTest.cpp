#include "platform/ui/NetworkNameDelegate.h"
#include "tests/platform/ui/TableViewFixture.h"

#include <algorithm>
#include <cstdlib>

namespace {

TEST_F(TableViewTest, RightAlignedHeadingFitsWithSpaceAfterIt)
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

TEST_F(TableViewTest, ShowsEmptyTextOnlyWhileEmpty)
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

// As some dark colour schemes leave it.
QPalette darkWithDarkPlaceholder()
{
    QPalette palette;
    palette.setColor(QPalette::Base, QColor(27, 30, 32));
    palette.setColor(QPalette::Text, Qt::white);
    palette.setColor(QPalette::PlaceholderText, QColor(27, 30, 32));
    return palette;
}

TEST_F(TableViewTest, EmptyTextAndHiddenNameAreLegibleInAnyColourScheme)
{
    const auto brightest = [](const QImage& image) {
        int value = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                value = std::max(value, qGray(image.pixel(x, y)));
        }
        return value;
    };
    constexpr int legible = 27 + 100;
    table.setPalette(darkWithDarkPlaceholder());
    table.setEmptyText(u"Nothing here."_qs);
    show();
    EXPECT_GT(brightest(painted()), legible);
    NetworkNameDelegate delegate(u"(hidden)"_qs, nullptr);
    table.setDelegateForTableColumn(u"name", &delegate);
    source.rows = { { QString(), QString() } };
    table.reloadData();
    EXPECT_GT(brightest(painted()), legible);
}

TEST_F(TableViewTest, QueriesEmptyTextOnEveryPaint)
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

TEST_F(TableViewTest, PartialPaintOfChangedEmptyTextRepaintsAll)
{
    show();
    QString reason = u"Not yet."_qs;
    table.setEmptyTextSource([&reason] { return reason; });
    QCoreApplication::processEvents();
    PaintObserver counter(*table.viewport());
    table.viewport()->repaint(0, 0, 1, 1);
    QCoreApplication::processEvents();
    EXPECT_EQ(counter.count, 1);
    reason = u"Still nothing."_qs;
    table.viewport()->repaint(0, 0, 1, 1);
    QTRY_COMPARE(counter.count, 3);
}

TEST_F(TableViewTest, ColumnWidthFollowsContents)
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

TEST_F(TableViewTest, KeepsColumnWidthsWhileEmptyAndThoseChosenByUser)
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

TEST_F(TableViewTest, CentresPictures)
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

} // namespace
