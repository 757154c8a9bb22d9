#include "survey/ui/ChannelViewLabels.h"

#include <algorithm>
#include <array>
#include <optional>

namespace {

using Curve = ChannelViewGeometry::Curve;
using Labels = std::vector<ChannelViewLabel>;

// Lines above the peak, the preferred one first; negative ones lie inside the curve.
constexpr std::array linesAbovePeak { 0, 1, 2, -2, 3, -3, -4 };
// Below this height names keep to the upper half, or they would cover the curves.
constexpr double minLinesForLowNames = 6;
// A name takes no more than this unless it is selected, and is left out where it would get less.
constexpr int maxCharacters = 18;
constexpr int minCharacters = 5;

struct Span {
    double left;
    double right;
};

class LabelPlacement {
public:
    LabelPlacement(const ChannelViewGeometry& geometry, const ChannelViewModel& model, const QFontMetrics& metrics)
        : m_geometry(geometry)
        , m_joinedRow(model.joinedRow)
        , m_metrics(metrics)
    {
    }

    [[nodiscard]] double cappedWidth(const Curve& curve) const
    {
        const double cap = m_metrics.averageCharWidth() * maxCharacters;
        return std::min(fullWidth(curve), cap + markWidth(curve) + padding());
    }

    [[nodiscard]] double fullWidth(const Curve& curve) const
    {
        return m_metrics.horizontalAdvance(curve.network->name) + markWidth(curve) + padding();
    }

    // As wide as wanted wherever that is possible, else as wide as the room that is left.
    [[nodiscard]] std::optional<ChannelViewLabel> place(const Curve& curve, double wanted, const Labels& placed) const
    {
        const double least
            = std::min(wanted, markWidth(curve) + m_metrics.averageCharWidth() * minCharacters + padding());
        for (const double needed : { wanted, least }) {
            for (const int lines : linesAbovePeak) {
                const double top = curve.peak.y() - m_geometry.labelHeight * (lines + 1) - padding() / 2;
                const auto room = freeSpan(curve, top, placed);
                if (room && room->right - room->left >= needed)
                    return labelIn(curve, top, *room, std::min(wanted, room->right - room->left));
            }
        }
        return std::nullopt;
    }

    // In its preferred place, whatever else is there.
    [[nodiscard]] ChannelViewLabel force(const Curve& curve) const
    {
        const QRectF& bounds = m_geometry.area;
        const double top
            = std::max(bounds.top() - m_geometry.labelHeight, curve.peak.y() - m_geometry.labelHeight - padding() / 2);
        return labelIn(curve, top, { bounds.left(), bounds.right() }, std::min(fullWidth(curve), bounds.width()));
    }

private:
    [[nodiscard]] bool isJoined(const Curve& curve) const { return curve.network->row == m_joinedRow; }
    [[nodiscard]] double padding() const { return m_geometry.gap; }
    [[nodiscard]] double markWidth(const Curve& curve) const
    {
        return isJoined(curve) ? m_geometry.labelHeight + padding() : 0;
    }

    // The room around the peak between the labels that are already placed on a line.
    [[nodiscard]] std::optional<Span> freeSpan(const Curve& curve, double top, const Labels& placed) const
    {
        const double height = m_geometry.labelHeight;
        const bool isLow = m_geometry.area.height() < height * minLinesForLowNames;
        const double bottom = isLow ? m_geometry.area.center().y() : m_geometry.area.bottom();
        if (top < m_geometry.area.top() - height || top + height > bottom)
            return std::nullopt;
        const QRectF& pane = m_geometry.paneOf(curve).area;
        Span span { pane.left(), pane.right() };
        for (const ChannelViewLabel& label : placed) {
            if (label.box.top() >= top + height || label.box.bottom() <= top)
                continue;
            if (label.box.left() > curve.peak.x())
                span.right = std::min(span.right, label.box.left());
            else if (label.box.right() < curve.peak.x())
                span.left = std::max(span.left, label.box.right());
            else
                return std::nullopt;
        }
        return span;
    }

    [[nodiscard]] ChannelViewLabel labelIn(const Curve& curve, double top, const Span& span, double width) const
    {
        const double left = std::clamp(curve.peak.x() - width / 2, span.left, std::max(span.left, span.right - width));
        ChannelViewLabel label { &curve, QRectF(left, top, width, m_geometry.labelHeight), {}, {}, {}, false };
        label.textBox = label.box.adjusted(padding() / 2 + markWidth(curve), 0, -padding() / 2, 0);
        if (isJoined(curve))
            label.mark = QRectF(left + padding() / 2, top, m_geometry.labelHeight, m_geometry.labelHeight);
        const QString& name = curve.network->name;
        const int textWidth = qCeil(label.textBox.width());
        label.isElided = m_metrics.horizontalAdvance(name) > textWidth;
        label.text = label.isElided ? m_metrics.elidedText(name, Qt::ElideRight, textWidth) : name;
        return label;
    }

    const ChannelViewGeometry& m_geometry;
    int m_joinedRow;
    const QFontMetrics& m_metrics;
};

auto labelOf(Labels& labels, const Curve& curve)
{
    return std::find_if(labels.begin(), labels.end(), [&curve](const auto& label) { return label.curve == &curve; });
}

// Gives the selected network its name in full where it has none yet, keeping clear of the joined network's only.
void showSelected(Labels& labels, const Curve& selected, int joinedRow, const LabelPlacement& placement)
{
    const auto present = labelOf(labels, selected);
    if (present != labels.end() && !present->isElided)
        return;
    if (present != labels.end())
        labels.erase(present);
    Labels kept;
    std::copy_if(labels.begin(), labels.end(), std::back_inserter(kept),
        [joinedRow](const ChannelViewLabel& label) { return label.curve->network->row == joinedRow; });
    const ChannelViewLabel label
        = placement.place(selected, placement.fullWidth(selected), kept).value_or(placement.force(selected));
    labels.erase(std::remove_if(labels.begin(), labels.end(),
                     [&label](const ChannelViewLabel& each) { return each.box.intersects(label.box); }),
        labels.end());
    labels.push_back(label);
}

} // namespace

std::vector<ChannelViewLabel> placeChannelViewLabels(
    const ChannelViewGeometry& geometry, const ChannelViewModel& model, const QFontMetrics& metrics)
{
    const LabelPlacement placement(geometry, model, metrics);
    std::vector<const Curve*> order;
    for (const Curve& curve : geometry.curves)
        order.push_back(&curve);
    std::stable_partition(
        order.begin(), order.end(), [&model](const Curve* curve) { return curve->network->row == model.joinedRow; });
    Labels labels;
    for (const Curve* const curve : order) {
        if (auto label = placement.place(*curve, placement.cappedWidth(*curve), labels))
            labels.push_back(std::move(*label));
    }
    for (const Curve& curve : geometry.curves) {
        if (curve.network->row == model.selectedRow)
            showSelected(labels, curve, model.joinedRow, placement);
    }
    return labels;
}

const ChannelViewNetwork* networkAt(
    const QPointF& point, const ChannelViewGeometry& geometry, const std::vector<ChannelViewLabel>& labels)
{
    const auto label = std::find_if(
        labels.begin(), labels.end(), [&point](const ChannelViewLabel& each) { return each.box.contains(point); });
    if (label != labels.end())
        return label->curve->network;
    const Curve* const curve = geometry.curveAt(point);
    return curve == nullptr ? nullptr : curve->network;
}
