#include "platform/ui/FaintText.h"

#include <QPainter>
#include <QPalette>
#include <QWidget>

QColor faintTextColour(const QPalette& palette)
{
    constexpr float opacity = 0.6F;
    QColor colour = palette.color(QPalette::Text);
    colour.setAlphaF(opacity * colour.alphaF());
    return colour;
}

void paintFaintText(QPainter& painter, const QWidget& view, const QRect& rect, const QString& text)
{
    const int margin = view.fontMetrics().height();
    painter.setPen(faintTextColour(view.palette()));
    painter.drawText(rect.adjusted(margin, margin, -margin, -margin), Qt::AlignCenter | Qt::TextWordWrap, text);
}
