#include "monitor/ui/LinkPlot.h"

#include "monitor/LinkDescription.h"
#include "monitor/PlotScale.h"
#include "monitor/ui/LinkColours.h"
#include "monitor/ui/LinkPlotGeometry.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QPainter>

namespace {

constexpr QSize preferredSize { 64, 14 }; // characters
constexpr QSize minSize { 32, 9 }; // characters
constexpr int spanMinutes = LinkHistory::spanSeconds / 60;
constexpr double samplesPerMinute = 60.0 / LinkHistory::secondsPerSample;
constexpr double gridWeight = 0.18;
constexpr double frameWeight = 0.55;

QAccessibleInterface* makeAccessiblePlot(const QString& className, QObject* object)
{
    if (className != QLatin1String(LinkPlot::staticMetaObject.className()))
        return nullptr;
    return new QAccessibleWidget(static_cast<QWidget*>(object), QAccessible::Chart);
}

QPen penOf(LinkSeries series, const QColor& base, const QFontMetrics& metrics)
{
    QPen pen(seriesColour(series, base), std::max(1.5, metrics.height() / 9.0));
    pen.setCapStyle(Qt::FlatCap);
    pen.setJoinStyle(Qt::RoundJoin);
    switch (series) {
    case LinkSeries::LinkQuality:
        break;
    case LinkSeries::SignalStrength:
        pen.setDashPattern({ 5.0, 2.0 });
        break;
    case LinkSeries::Transmit:
        pen.setDashPattern({ 1.5, 1.5 });
        break;
    case LinkSeries::Receive:
        pen.setDashPattern({ 6.0, 2.0, 1.5, 2.0 });
        break;
    }
    return pen;
}

// The end mark of a curve: a disc, square, triangle or diamond.
void drawMark(QPainter& painter, LinkSeries series, const QColor& colour, const QPointF& centre, double radius)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    const auto at = [&centre, radius](double x, double y) { return centre + QPointF(x * radius, y * radius); };
    switch (series) {
    case LinkSeries::LinkQuality:
        painter.drawEllipse(centre, radius, radius);
        break;
    case LinkSeries::SignalStrength:
        painter.drawRect(QRectF(at(-0.9, -0.9), at(0.9, 0.9)));
        break;
    case LinkSeries::Transmit:
        painter.drawPolygon(QPolygonF({ at(0, -1.2), at(1.1, 0.9), at(-1.1, 0.9) }));
        break;
    case LinkSeries::Receive:
        painter.drawPolygon(QPolygonF({ at(0, -1.3), at(1.3, 0), at(0, 1.3), at(-1.3, 0) }));
        break;
    }
}

double markRadius(const QFontMetrics& metrics)
{
    return metrics.height() / 5.0;
}

QSize sizeInPixels(const QSize& characters, const QFontMetrics& metrics)
{
    return { metrics.averageCharWidth() * characters.width(), metrics.height() * characters.height() };
}

// Share of the plot's height.
double heightOfLine(std::uint32_t line)
{
    return line / static_cast<double>(ThroughputScale::divisions);
}

} // namespace

LinkPlot::LinkPlot(QWidget* parent)
    : QFrame(parent)
{
    static const bool factoryInstalled = [] {
        QAccessible::installFactory(makeAccessiblePlot);
        return true;
    }();
    (void)factoryInstalled;
    setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
    setAccessibleDescription(describeNewest(m_history));
}

void LinkPlot::append(const std::optional<LinkSample>& sample)
{
    const bool wasEmpty = !m_history.hasSamples();
    m_history.append(sample);
    const QString description = describeNewest(m_history);
    if (accessibleDescription() != description)
        setAccessibleDescription(description);
    // An empty plot does not change.
    if (!wasEmpty || m_history.hasSamples())
        update();
}

QSize LinkPlot::sizeHint() const
{
    return sizeInPixels(preferredSize, fontMetrics());
}

QSize LinkPlot::minimumSizeHint() const
{
    return sizeInPixels(minSize, fontMetrics());
}

void LinkPlot::paintEvent(QPaintEvent* event)
{
    QFrame::paintEvent(event);
    const ThroughputScale scale = throughputScale(m_history.maxThroughputKbps());
    const LinkPlotGeometry geometry(contentsRect(), fontMetrics(), scale);
    QPainter painter(this);
    drawGrid(painter, geometry);
    drawAxisLabels(painter, geometry, scale);
    drawTimeLabels(painter, geometry);
    painter.setRenderHint(QPainter::Antialiasing);
    drawLegend(painter, geometry);
    if (m_history.hasSamples()) {
        drawCurves(painter, geometry, scale);
        return;
    }
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(
        geometry.area, Qt::AlignCenter | Qt::TextWordWrap, tr("No link in the last %1 minutes").arg(spanMinutes));
}

void LinkPlot::drawGrid(QPainter& painter, const LinkPlotGeometry& geometry) const
{
    const QColor base = palette().color(QPalette::Base);
    const QColor text = palette().color(QPalette::Text);
    const QRect& area = geometry.area;
    painter.setPen(blend(base, text, gridWeight));
    for (std::uint32_t line = 1; line <= ThroughputScale::divisions; ++line) {
        const int y = qRound(geometry.yOfHeight(heightOfLine(line)));
        painter.drawLine(area.left(), y, area.right(), y);
    }
    for (int minute = 1; minute < spanMinutes; ++minute) {
        const int x = qRound(geometry.xOfAge(minute * samplesPerMinute));
        painter.drawLine(x, area.top(), x, area.bottom());
    }
    painter.setPen(blend(base, text, frameWeight));
    painter.drawLine(area.bottomLeft(), area.bottomRight());
    painter.drawLine(area.topLeft(), area.bottomLeft());
    painter.drawLine(area.topRight(), area.bottomRight());
}

void LinkPlot::drawAxisLabels(QPainter& painter, const LinkPlotGeometry& geometry, const ThroughputScale& scale) const
{
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(geometry.percentUnit, Qt::AlignRight | Qt::AlignVCenter, QStringLiteral("%"));
    painter.drawText(geometry.throughputUnit, Qt::AlignLeft | Qt::AlignVCenter, scale.unitText());

    const int lineHeight = fontMetrics().height();
    const auto atHeight = [lineHeight](QRect column, int y) {
        column.moveTop(y - lineHeight / 2);
        return column;
    };
    // If the grid lines are too close for text, label only the top and the bottom one.
    const bool isLow = geometry.area.height() < lineHeight * static_cast<int>(ThroughputScale::divisions);
    const std::uint32_t labelStep = isLow ? ThroughputScale::divisions : 1;
    for (std::uint32_t line = 0; line <= ThroughputScale::divisions; line += labelStep) {
        const int y = qRound(geometry.yOfHeight(heightOfLine(line)));
        painter.drawText(atHeight(geometry.percentUnit, y), Qt::AlignRight | Qt::AlignVCenter,
            QString::number(100 / ThroughputScale::divisions * line));
        painter.drawText(atHeight(geometry.throughputUnit, y), Qt::AlignLeft | Qt::AlignVCenter, scale.labelText(line));
    }
}

void LinkPlot::drawTimeLabels(QPainter& painter, const LinkPlotGeometry& geometry) const
{
    const auto labelOf = [](int minute) { return minute == 0 ? tr("now") : tr("\u2212%1 min").arg(minute); };
    const int labelWidth = fontMetrics().horizontalAdvance(labelOf(spanMinutes)) + 2 * geometry.gap;
    const bool isNarrow = geometry.area.width() < labelWidth * spanMinutes;
    painter.setPen(palette().color(QPalette::Text));
    for (int minute = 0; minute <= spanMinutes; minute += isNarrow ? spanMinutes : 1) {
        const int x = qRound(geometry.xOfAge(minute * samplesPerMinute));
        const QRect label(x - labelWidth / 2, geometry.area.bottom() + fontMetrics().height() / 2, labelWidth,
            fontMetrics().height());
        painter.drawText(label, Qt::AlignHCenter | Qt::AlignTop, labelOf(minute));
    }
}

void LinkPlot::drawLegend(QPainter& painter, const LinkPlotGeometry& geometry) const
{
    const QColor base = palette().color(QPalette::Base);
    for (const auto& entry : geometry.legend) {
        const QPen pen = penOf(entry.series, base, fontMetrics());
        const QPointF middle = QRectF(entry.swatch).center();
        const double radius = markRadius(fontMetrics());
        const QPointF end(entry.swatch.right() - radius, middle.y());
        painter.setPen(pen);
        painter.drawLine(QPointF(entry.swatch.left(), middle.y()), end);
        drawMark(painter, entry.series, pen.color(), end, radius);
        painter.setPen(palette().color(QPalette::Text));
        painter.drawText(entry.text, Qt::AlignLeft | Qt::AlignVCenter, seriesName(entry.series));
    }
}

void LinkPlot::drawCurves(QPainter& painter, const LinkPlotGeometry& geometry, const ThroughputScale& scale) const
{
    const QColor base = palette().color(QPalette::Base);
    // Drawn in reverse, so that the percent curves are on top.
    for (auto series = linkSeries.rbegin(); series != linkSeries.rend(); ++series) {
        const QPen pen = penOf(*series, base, fontMetrics());
        for (const auto& run : geometry.runs(*series, m_history, scale)) {
            const bool isNewest = run.front().x() == geometry.xOfAge(0);
            if (run.size() > 1) {
                painter.setPen(pen);
                painter.setBrush(Qt::NoBrush);
                painter.drawPolyline(run.data(), static_cast<int>(run.size()));
            }
            if (run.size() == 1 || isNewest)
                drawMark(
                    painter, *series, pen.color(), run.front(), isNewest ? markRadius(fontMetrics()) : pen.widthF());
        }
    }
}
