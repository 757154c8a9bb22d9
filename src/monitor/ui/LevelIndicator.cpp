#include "monitor/ui/LevelIndicator.h"

#include "monitor/LinkFigures.h"
#include "monitor/ui/LinkColours.h"

#include <QPainter>
#include <QStyle>

#include <array>

namespace {

constexpr int preferredWidth = 24; // characters
constexpr int minWidth = 8; // characters
constexpr double outlineWeight = 0.45;
constexpr double markWeight = 0.8;

} // namespace

LevelIndicator::LevelIndicator(QWidget* parent)
    : QProgressBar(parent)
{
    setTextVisible(false);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize LevelIndicator::sizeHint() const
{
    return { fontMetrics().averageCharWidth() * preferredWidth, fontMetrics().height() };
}

QSize LevelIndicator::minimumSizeHint() const
{
    return { fontMetrics().averageCharWidth() * minWidth, fontMetrics().height() };
}

void LevelIndicator::paintEvent([[maybe_unused]] QPaintEvent* event)
{
    const QColor base = palette().color(QPalette::Base);
    const QRect groove = rect().adjusted(0, 0, -1, -1);
    const auto offsetOf = [&groove, this](int level) {
        const int span = std::max(1, maximum() - minimum());
        return groove.width() * std::clamp(level - minimum(), 0, span) / span;
    };

    QPainter painter(this);
    painter.fillRect(groove, base);
    QRect filled = groove;
    filled.setWidth(offsetOf(value()));
    const LinkGrade grade = gradeOf(static_cast<std::uint32_t>(std::max(0, value())));
    painter.fillRect(QStyle::visualRect(layoutDirection(), groove, filled), gradeColour(grade, base));

    painter.setPen(blend(base, palette().color(QPalette::Text), markWeight));
    for (const std::uint32_t threshold : std::array { normalAbovePercent, goodAbovePercent }) {
        const QPoint mark(groove.left() + offsetOf(static_cast<int>(threshold)), groove.bottom());
        const QPoint bottom = QStyle::visualPos(layoutDirection(), groove, mark);
        painter.drawLine(bottom, bottom - QPoint(0, groove.height() / 3));
    }
    painter.setPen(blend(base, palette().color(QPalette::Text), outlineWeight));
    painter.drawRect(groove);
}
