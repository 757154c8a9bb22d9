// render-icon SVG SIZE PNG: a square picture of SIZE pixels, on nothing.

#include <QByteArray>
#include <QImage>
#include <QPainter>
#include <QString>
#include <QSvgRenderer>

#include <cstdio>

int main(int argumentCount, char** arguments)
{
    if (argumentCount != 4) {
        (void)std::fputs("it is: render-icon SVG SIZE PNG\n", stderr);
        return 2;
    }
    const int size = QByteArray(arguments[2]).toInt();
    QSvgRenderer renderer(QString::fromLocal8Bit(arguments[1]));
    if (!renderer.isValid() || size <= 0) {
        (void)std::fprintf(stderr, "render-icon: %s is no picture, or %s no size\n", arguments[1], arguments[2]);
        return 1;
    }
    QImage image(size, size, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter);
    painter.end();
    if (!image.save(QString::fromLocal8Bit(arguments[3]), "PNG")) {
        (void)std::fprintf(stderr, "render-icon: %s could not be written\n", arguments[3]);
        return 1;
    }
    return 0;
}
