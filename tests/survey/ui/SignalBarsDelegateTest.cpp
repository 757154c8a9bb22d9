#include "survey/ui/SignalBarsDelegate.h"

#include <QImage>
#include <QPainter>
#include <QStandardItemModel>
#include <gtest/gtest.h>

namespace {

// The dark pixels in the left half of the cell, which contains the bars.
int inkOfBars(const QString& figure)
{
    QStandardItemModel model(1, 1);
    model.setData(model.index(0, 0), figure);
    SignalBarsDelegate delegate;
    QStyleOptionViewItem option;
    option.rect = QRect(0, 0, 200, 24);
    option.palette.setColor(QPalette::Text, Qt::black);
    option.palette.setColor(QPalette::Base, Qt::white);
    option.displayAlignment = Qt::AlignRight | Qt::AlignVCenter;
    QImage image(200, 24, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    delegate.paint(&painter, option, model.index(0, 0));
    painter.end();
    int ink = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < 100; ++x)
            ink += qGray(image.pixel(x, y)) < 100 ? 1 : 0;
    }
    return ink;
}

TEST(SignalBarsDelegate, RoundsTheNumberOfFilledBarsUp)
{
    EXPECT_EQ(filledSignalBars(0), 0);
    EXPECT_EQ(filledSignalBars(1), 1);
    EXPECT_EQ(filledSignalBars(20), 1);
    EXPECT_EQ(filledSignalBars(21), 2);
    EXPECT_EQ(filledSignalBars(100), 5);
    EXPECT_EQ(filledSignalBars(-5), 0);
    EXPECT_EQ(filledSignalBars(300), 5);
}

TEST(SignalBarsDelegate, DrawsMoreForABetterSignal)
{
    EXPECT_EQ(inkOfBars(u"0"_qs), 0);
    EXPECT_GT(inkOfBars(u"30"_qs), 0);
    EXPECT_GT(inkOfBars(u"100"_qs), inkOfBars(u"30"_qs));
}

TEST(SignalBarsDelegate, SizeHintIncludesTheBars)
{
    QStandardItemModel model(1, 1);
    model.setData(model.index(0, 0), u"100"_qs);
    const QStyleOptionViewItem option;
    EXPECT_GT(SignalBarsDelegate().sizeHint(option, model.index(0, 0)).width(),
        QStyledItemDelegate().sizeHint(option, model.index(0, 0)).width());
}

} // namespace
