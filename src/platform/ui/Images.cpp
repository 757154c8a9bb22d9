#include "platform/ui/Images.h"

#include <QFile>
#include <QGuiApplication>
#include <QHash>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QSvgRenderer>

// Resources in a static library are only linked if something refers to them.
static void registerPictures()
{
    Q_INIT_RESOURCE(pictures);
}

namespace {

QColor textColour(QIcon::Mode mode)
{
    const QPalette palette = QGuiApplication::palette();
    switch (mode) {
    case QIcon::Disabled:
        return palette.color(QPalette::Disabled, QPalette::Text);
    case QIcon::Selected:
        return palette.color(QPalette::Active, QPalette::HighlightedText);
    case QIcon::Normal:
    case QIcon::Active:
        break;
    }
    return palette.color(QPalette::Active, QPalette::Text);
}

class VectorIconEngine final : public QIconEngine {
public:
    explicit VectorIconEngine(QByteArray svg)
        : m_svg(std::move(svg))
    {
    }

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State /*state*/) override
    {
        QByteArray svg = m_svg;
        svg.replace("currentColor", textColour(mode).name().toLatin1());
        QSvgRenderer renderer(svg);
        renderer.setAspectRatioMode(Qt::KeepAspectRatio);
        renderer.render(painter, rect);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(0, 0), size), mode, state);
        return pixmap;
    }

    [[nodiscard]] QIconEngine* clone() const override { return new VectorIconEngine(m_svg); }

private:
    QByteArray m_svg;
};

QIcon iconFromResource(const QString& path)
{
    registerPictures();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QIcon(new VectorIconEngine(file.readAll()));
}

} // namespace

QIcon imageNamed(QStringView name)
{
    static QHash<QString, QIcon> images;
    const QString key = name.toString();
    const auto known = images.constFind(key);
    if (known != images.cend())
        return *known;
    return *images.insert(key, iconFromResource(QStringLiteral(":/images/%1.svg").arg(name)));
}

QIcon applicationIcon()
{
    return iconFromResource(QStringLiteral(":/icons/com.quorvane.vantrel.svg"));
}
