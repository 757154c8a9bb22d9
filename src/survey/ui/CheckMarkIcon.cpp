#include "survey/ui/CheckMarkIcon.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>

namespace {

// Draws with the present palette, at the size that is asked for.
class CheckMarkEngine final : public QIconEngine {
public:
    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State /*state*/) override
    {
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const qreal unit = rect.height() / 16.0;
        const QPointF origin = QRectF(rect).topLeft();
        const QPointF mark[] { origin + QPointF(3, 8.5) * unit, origin + QPointF(6.5, 12) * unit,
            origin + QPointF(13, 4.5) * unit };
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(QPen(QGuiApplication::palette().color(group, QPalette::ButtonText), 2 * unit, Qt::SolidLine,
            Qt::RoundCap, Qt::RoundJoin));
        painter->drawPolyline(mark, std::size(mark));
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }

    [[nodiscard]] QIconEngine* clone() const override { return new CheckMarkEngine(*this); }
};

} // namespace

QIcon checkMarkIcon()
{
    return QIcon(new CheckMarkEngine);
}
