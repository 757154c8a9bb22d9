#include "platform/ui/Images.h"

#include <QApplication>
#include <QImage>
#include <QPalette>
#include <gtest/gtest.h>

namespace {

// The colour of the most opaque pixel.
QColor inkOf(const QPixmap& pixmap)
{
    const QImage image = pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
    QColor ink(0, 0, 0, 0);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y).alpha() > ink.alpha())
                ink = image.pixelColor(x, y);
        }
    }
    return ink;
}

TEST(Images, AreFoundByName)
{
    EXPECT_FALSE(imageNamed(u"HANDSHAK").isNull());
    EXPECT_FALSE(applicationIcon().isNull());
    EXPECT_TRUE(imageNamed(u"NOSUCHIMAGE").isNull());
}

TEST(Images, AreTheSameWhenAskedForAgain)
{
    EXPECT_EQ(imageNamed(u"HANDSHAK").cacheKey(), imageNamed(u"HANDSHAK").cacheKey());
}

TEST(Images, TakeTheColourOfTheTextTheyStandBeside)
{
    const QPalette before = QApplication::palette();
    QPalette dark = before;
    dark.setColor(QPalette::Text, QColor(0xF0, 0xF0, 0xF0));
    dark.setColor(QPalette::HighlightedText, QColor(0x00, 0x20, 0x40));
    QApplication::setPalette(dark);
    const QIcon image = imageNamed(u"HANDSHAK");
    EXPECT_GT(inkOf(image.pixmap(QSize(64, 64))).lightness(), 200);
    EXPECT_LT(inkOf(image.pixmap(QSize(64, 64), QIcon::Selected)).lightness(), 60);
    QApplication::setPalette(before);
}

TEST(Images, HaveEveryPixelAtDoubleScale)
{
    const QPixmap pixmap = imageNamed(u"HANDSHAK").pixmap(QSize(16, 16), 2.0);
    EXPECT_EQ(pixmap.size(), QSize(32, 32));
}

} // namespace
