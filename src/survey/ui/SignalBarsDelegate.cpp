#include "survey/ui/SignalBarsDelegate.h"

#include <QApplication>
#include <QPainter>

#include <algorithm>

namespace {

constexpr int qualityPerBar = 100 / signalBars;

// The size of all bars together: slightly lower than a line of text.
QSize barsSize(const QFontMetrics& metrics)
{
    const int height = metrics.ascent();
    return { height * 3 / 2, height };
}

void drawBars(QPainter& painter, const QRect& field, int filled, QColor colour)
{
    const qreal step = static_cast<qreal>(field.width()) / signalBars;
    const qreal thickness = step * 0.7;
    QColor unfilled = colour;
    unfilled.setAlphaF(0.22F);
    painter.setPen(Qt::NoPen);
    for (int bar = 0; bar < signalBars; ++bar) {
        const qreal height = field.height() * (bar + 1.0) / signalBars;
        painter.setBrush(bar < filled ? colour : unfilled);
        painter.drawRect(QRectF(field.left() + bar * step, field.bottom() + 1 - height, thickness, height));
    }
}

} // namespace

int filledSignalBars(int quality)
{
    return (std::clamp(quality, 0, 100) + qualityPerBar - 1) / qualityPerBar;
}

void SignalBarsDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    NumberDelegate::paint(painter, option, index);
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    const QSize size = barsSize(cell.fontMetrics);
    const QWidget* const widget = option.widget;
    const QStyle* const style = widget != nullptr ? widget->style() : QApplication::style();
    const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, &cell, widget) + 1;
    QRect field = QStyle::alignedRect(
        option.direction, Qt::AlignLeft | Qt::AlignVCenter, size, option.rect.adjusted(margin, 0, -margin, 0));
    const bool selected = (option.state & QStyle::State_Selected) != 0;
    const auto role = selected ? QPalette::HighlightedText : QPalette::Text;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    drawBars(*painter, field, filledSignalBars(index.data().toInt()), cell.palette.color(QPalette::Active, role));
    painter->restore();
}

QSize SignalBarsDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const QSize text = NumberDelegate::sizeHint(option, index);
    const int spacing = option.fontMetrics.averageCharWidth() * 2;
    return text + QSize(barsSize(option.fontMetrics).width() + spacing, 0);
}
