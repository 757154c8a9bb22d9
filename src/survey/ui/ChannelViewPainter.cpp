#include "survey/ui/ChannelViewPainter.h"

#include "platform/ui/Images.h"

#include <QCoreApplication>
#include <QIcon>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr double gridOpacity = 0.15;
constexpr double axisOpacity = 0.55;
constexpr double curveOpacity = 0.75;
constexpr double curveFillOpacity = 0.05;
constexpr double joinedFillOpacity = 0.3;
constexpr double selectedFillOpacity = 0.2;
constexpr double hatchingOpacity = 0.7;
constexpr double labelBackgroundOpacity = 0.8;
constexpr int signalStep = 25;
constexpr int minGreyDifference = 60;

double thinLine(const ChannelViewGeometry& geometry)
{
    return std::max(1.0, geometry.labelHeight / 14);
}

double thickLine(const ChannelViewGeometry& geometry)
{
    return std::max(2.0, geometry.labelHeight / 6);
}

// Networks on one channel differ in their lines.
Qt::PenStyle lineStyle(const ChannelViewGeometry::Curve& curve)
{
    static constexpr std::array styles { Qt::SolidLine, Qt::DashLine, Qt::DotLine, Qt::DashDotLine };
    return styles[static_cast<std::size_t>(curve.rankOnChannel) % styles.size()];
}

QPainterPath outlineOf(const ChannelViewGeometry& geometry, const ChannelViewGeometry::Curve& curve)
{
    const double bottom = geometry.area.bottom();
    QPainterPath path(QPointF(curve.left, bottom));
    // The control point of a parabola lies twice as high as its peak.
    path.quadTo(QPointF(curve.peak.x(), 2 * curve.peak.y() - bottom), QPointF(curve.right, bottom));
    return path;
}

} // namespace

ChannelViewPainter::ChannelViewPainter(QPainter& painter, const QPalette& palette, QPalette::ColorGroup group)
    : m_painter(painter)
    , m_palette(palette)
    , m_group(group)
{
}

void ChannelViewPainter::paint(const ChannelViewModel& model, const ChannelViewGeometry& geometry,
    const std::vector<ChannelViewLabel>& labels) const
{
    drawGrid(geometry);
    drawAxisTexts(geometry);
    m_painter.setRenderHint(QPainter::Antialiasing);
    const Curve* joined = nullptr;
    const Curve* selected = nullptr;
    for (const Curve& curve : geometry.curves) {
        const bool isJoined = curve.network->row == model.joinedRow;
        const bool isSelected = curve.network->row == model.selectedRow;
        if (isJoined)
            joined = &curve;
        if (isSelected)
            selected = &curve;
        if (!isJoined && !isSelected)
            drawCurve(geometry, curve);
    }
    if (joined != nullptr)
        drawJoined(geometry, *joined, joined == selected);
    if (selected != nullptr)
        drawSelected(geometry, *selected);
    drawLeaders(geometry, labels);
    for (const ChannelViewLabel& label : labels)
        drawLabel(geometry, label, label.curve == selected);
}

void ChannelViewPainter::paintFocusFrame(const QRectF& contents, const ChannelViewGeometry& geometry) const
{
    const double width = thickLine(geometry);
    QPen pen(selectionColour(), width);
    pen.setJoinStyle(Qt::MiterJoin);
    m_painter.setPen(pen);
    m_painter.setBrush(Qt::NoBrush);
    m_painter.drawRect(contents.adjusted(width / 2, width / 2, -width / 2, -width / 2));
}

void ChannelViewPainter::drawGrid(const ChannelViewGeometry& geometry) const
{
    for (const auto& pane : geometry.panes) {
        for (const auto& range : pane.ranges) {
            for (int signal = 0; signal <= 100; signal += signalStep) {
                const double y = qRound(geometry.yOfSignal(signal));
                m_painter.setPen(QPen(textColour(signal == 0 ? axisOpacity : gridOpacity), 0));
                m_painter.drawLine(QPointF(range.left, y), QPointF(range.right, y));
            }
        }
    }
    m_painter.setPen(QPen(textColour(axisOpacity), 0));
    for (const auto& tick : geometry.ticks) {
        const double bottom = qRound(geometry.area.bottom());
        m_painter.drawLine(QPointF(qRound(tick.x), bottom), QPointF(qRound(tick.x), bottom + geometry.gap / 2.0));
    }
}

void ChannelViewPainter::drawAxisTexts(const ChannelViewGeometry& geometry) const
{
    m_painter.setPen(textColour());
    for (const auto& tick : geometry.ticks) {
        if (!tick.label.isEmpty())
            m_painter.drawText(tick.label, Qt::AlignCenter | Qt::TextDontClip, QString::number(tick.channel));
    }
    for (const auto& pane : geometry.panes)
        m_painter.drawText(pane.title, Qt::AlignCenter, pane.titleText);

    const double line = geometry.labelHeight;
    const bool isLow = geometry.area.height() < 100.0 / signalStep * line;
    for (int signal = 0; signal <= 100; signal += isLow ? 100 : signalStep) {
        const QRectF label(
            geometry.signalLabels.left(), geometry.yOfSignal(signal) - line / 2, geometry.signalLabels.width(), line);
        m_painter.drawText(label, Qt::AlignRight | Qt::AlignVCenter, QString::number(signal));
    }
    if (geometry.signalTitle.isEmpty())
        return;
    m_painter.save();
    m_painter.translate(geometry.signalTitle.bottomLeft());
    m_painter.rotate(-90);
    m_painter.drawText(QRectF(QPointF(0, 0), geometry.signalTitle.size().transposed()), Qt::AlignCenter,
        QCoreApplication::translate("ChannelView", "Signal"));
    m_painter.restore();
}

void ChannelViewPainter::drawCurve(const ChannelViewGeometry& geometry, const Curve& curve) const
{
    m_painter.setPen(QPen(textColour(curveOpacity), thinLine(geometry), lineStyle(curve)));
    // Fills add up; filled should mean joined.
    m_painter.setBrush(curve.rankOnChannel == 0 ? QBrush(textColour(curveFillOpacity)) : QBrush(Qt::NoBrush));
    m_painter.drawPath(outlineOf(geometry, curve));
}

void ChannelViewPainter::drawJoined(const ChannelViewGeometry& geometry, const Curve& curve, bool isSelected) const
{
    m_painter.setPen(isSelected ? QPen(Qt::NoPen) : QPen(textColour(), thickLine(geometry)));
    m_painter.setBrush(textColour(joinedFillOpacity));
    m_painter.drawPath(outlineOf(geometry, curve));
}

void ChannelViewPainter::drawSelected(const ChannelViewGeometry& geometry, const Curve& curve) const
{
    const QPainterPath outline = outlineOf(geometry, curve);
    QColor fill = selectionColour();
    fill.setAlphaF(static_cast<float>(selectedFillOpacity));
    m_painter.fillPath(outline, fill);
    drawHatching(geometry, outline);
    m_painter.setPen(QPen(selectionColour(), thickLine(geometry)));
    m_painter.setBrush(Qt::NoBrush);
    m_painter.drawPath(outline);
}

// Not a brush pattern: its lines would be one device pixel wide on every screen.
void ChannelViewPainter::drawHatching(const ChannelViewGeometry& geometry, const QPainterPath& outline) const
{
    QColor colour = selectionColour();
    colour.setAlphaF(static_cast<float>(hatchingOpacity));
    const QRectF bounds = outline.boundingRect();
    m_painter.save();
    m_painter.setClipPath(outline);
    m_painter.setPen(QPen(colour, thinLine(geometry)));
    const double distance = 1.5 * geometry.gap;
    const int lines = static_cast<int>(std::ceil((bounds.width() + bounds.height()) / distance));
    for (int line = 0; line < lines; ++line) {
        const double x = bounds.left() - bounds.height() + line * distance;
        m_painter.drawLine(QPointF(x, bounds.bottom()), QPointF(x + bounds.height(), bounds.top()));
    }
    m_painter.restore();
}

void ChannelViewPainter::drawLeaders(
    const ChannelViewGeometry& geometry, const std::vector<ChannelViewLabel>& labels) const
{
    m_painter.setPen(QPen(textColour(axisOpacity), thinLine(geometry)));
    for (const ChannelViewLabel& label : labels) {
        const QPointF& peak = label.curve->peak;
        if (label.box.bottom() < peak.y() - geometry.gap)
            m_painter.drawLine(peak, QPointF(peak.x(), label.box.bottom()));
    }
}

void ChannelViewPainter::drawLabel(
    const ChannelViewGeometry& geometry, const ChannelViewLabel& label, bool isSelected) const
{
    QColor background = m_palette.color(m_group, isSelected ? QPalette::Highlight : QPalette::Base);
    if (!isSelected)
        background.setAlphaF(static_cast<float>(labelBackgroundOpacity));
    m_painter.setPen(Qt::NoPen);
    m_painter.setBrush(background);
    const double radius = geometry.gap / 2.0;
    m_painter.drawRoundedRect(label.box, radius, radius);
    if (!label.mark.isEmpty()) {
        const QIcon mark = imageNamed(u"HANDSHAK");
        mark.paint(
            &m_painter, label.mark.toAlignedRect(), Qt::AlignCenter, isSelected ? QIcon::Selected : QIcon::Normal);
    }
    m_painter.setPen(m_palette.color(m_group, isSelected ? QPalette::HighlightedText : QPalette::Text));
    m_painter.drawText(label.textBox, Qt::AlignCenter | Qt::TextDontClip | Qt::TextSingleLine, label.text);
}

QColor ChannelViewPainter::textColour(double opacity) const
{
    QColor colour = m_palette.color(m_group, QPalette::Text);
    colour.setAlphaF(static_cast<float>(opacity));
    return colour;
}

QColor ChannelViewPainter::selectionColour() const
{
    const QColor highlight = m_palette.color(m_group, QPalette::Highlight);
    const QColor base = m_palette.color(m_group, QPalette::Base);
    const bool standsOut = std::abs(qGray(highlight.rgb()) - qGray(base.rgb())) >= minGreyDifference;
    return standsOut ? highlight : textColour();
}
