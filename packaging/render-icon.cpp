// render-icon SVG SIZE PNG: renders an SVG to a square PNG of SIZE pixels with a transparent background.

#include <QByteArray>
#include <QImage>
#include <QPainter>
#include <QString>
#include <QSvgRenderer>

#include <cstdio>

int main(int argumentCount, char** arguments)
{
    if (argumentCount != 4) {
        (void)std::fputs("usage: render-icon SVG SIZE PNG\n", stderr);
        return 2;
    }
    const int size = QByteArray(arguments[2]).toInt();
    QSvgRenderer renderer(QString::fromLocal8Bit(arguments[1]));
    if (!renderer.isValid() || size <= 0) {
        (void)std::fprintf(stderr, "render-icon: invalid picture %s or size %s\n", arguments[1], arguments[2]);
        return 1;
    }
    QImage image(size, size, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter);
    painter.end();
    if (!image.save(QString::fromLocal8Bit(arguments[3]), "PNG")) {
        (void)std::fprintf(stderr, "render-icon: cannot write %s\n", arguments[3]);
        return 1;
    }
    return 0;
}
