#include "platform/ui/Images.h"

#include <QApplication>
#include <QImage>
#include <QPalette>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

// Relative luminance (0 to 1) and contrast ratio (1 to 21), as WCAG 2 defines them.
double luminanceOf(const QColor& colour)
{
    const auto linear
        = [](double part) { return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

double contrastOf(const QColor& one, const QColor& other)
{
    const auto [low, high] = std::minmax({ luminanceOf(one), luminanceOf(other) });
    return (high + 0.05) / (low + 0.05);
}

QColor blended(const QColor& background, const QColor& paint)
{
    const double alpha = paint.alphaF();
    const auto mixed
        = [alpha](double under, double over) { return static_cast<float>(over * alpha + under * (1 - alpha)); };
    return QColor::fromRgbF(mixed(background.redF(), paint.redF()), mixed(background.greenF(), paint.greenF()),
        mixed(background.blueF(), paint.blueF()));
}

// The contrast between a picture and a background. Antialiased edges are ignored.
struct Readability {
    int painted { 0 }; // pixels
    int readable { 0 }; // of these, with the contrast of 3 that WCAG 2 requires for graphics
    double minContrast { 21 }; // of opaque pixels
};

Readability readabilityOn(const QColor& background, const QImage& picture)
{
    Readability result;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QColor paint = picture.pixelColor(x, y);
            if (paint.alpha() < 120)
                continue;
            const double contrast = contrastOf(background, blended(background, paint));
            ++result.painted;
            result.readable += contrast >= 3 ? 1 : 0;
            if (paint.alpha() == 255)
                result.minContrast = std::min(result.minContrast, contrast);
        }
    }
    return result;
}

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

TEST(Images, AreCached)
{
    EXPECT_EQ(imageNamed(u"HANDSHAK").cacheKey(), imageNamed(u"HANDSHAK").cacheKey());
}

TEST(Images, UseTextColour)
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

class PictureReadability : public testing::TestWithParam<const char16_t*> {
protected:
    [[nodiscard]] static Readability on(const QColor& background, const QColor& text)
    {
        const QPalette before = QApplication::palette();
        QPalette palette = before;
        palette.setColor(QPalette::Text, text);
        QApplication::setPalette(palette);
        const QImage picture
            = imageNamed(GetParam()).pixmap(QSize(128, 128)).toImage().convertToFormat(QImage::Format_ARGB32);
        QApplication::setPalette(before);
        return readabilityOn(background, picture);
    }
};

// An accent colour cannot have a contrast of 3 on both backgrounds, so it only has to be visible; most of the picture
// must use the text colour. These are the darkest light background and the lightest dark one that pictures appear on.
TEST_P(PictureReadability, IsSufficientOnLightAndDarkBackground)
{
    struct Desktop {
        const char* name;
        QColor background;
        QColor text;
    };
    for (const Desktop& desktop : std::array { Desktop { "light", QColor(0xEF, 0xEF, 0xEF), QColor(0, 0, 0) },
             Desktop { "dark", QColor(0x43, 0x46, 0x4A), QColor(0xFC, 0xFC, 0xFC) } }) {
        SCOPED_TRACE(desktop.name);
        const Readability readability = on(desktop.background, desktop.text);
        EXPECT_GT(readability.painted, 500);
        EXPECT_GT(readability.readable * 2, readability.painted);
        EXPECT_GE(readability.minContrast, 2.75);
    }
}

INSTANTIATE_TEST_SUITE_P(Images, PictureReadability,
    testing::Values(u"CHECKMRK", u"UNCHECKMRK", u"HANDSHAK", u"QUORVANE", u"RADIOOFF", u"RADIOON"),
    [](const auto& instance) { return QStringView(instance.param).toString().toStdString(); });

TEST(Images, AreSharpAtDoubleScale)
{
    const QPixmap pixmap = imageNamed(u"HANDSHAK").pixmap(QSize(16, 16), 2.0);
    EXPECT_EQ(pixmap.size(), QSize(32, 32));
}

} // namespace
