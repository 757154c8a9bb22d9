#include "survey/ui/ChannelViewGeometry.h"

#include "driver/records/ChannelTable.h"
#include "survey/ChannelViewText.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr double maxSignal = 100;
// The channels of 2.4 GHz overlap, so their axis needs more room for the same width in MHz.
constexpr double scaleOf2GHz = 3;
// How much narrower a range without networks is drawn.
constexpr double emptyRangeScale = 0.3;
// Below these sizes the titles of the axes leave their room to the curves.
constexpr int minLinesForTitles = 7;
constexpr int minCharactersForSignalTitle = 40;

using RangesInUse = std::array<bool, channelRanges.size()>;

double weightOf(std::size_t range, const RangesInUse& inUse)
{
    const ChannelRange& channels = channelRanges[range];
    const double scale = channels.band == ChannelBand::Band2GHz ? scaleOf2GHz : 1;
    return (channels.highKhz - channels.lowKhz) * scale * (inUse[range] ? 1 : emptyRangeScale);
}

// Channels 34, 38, 42 and 46 lie between those in general use.
bool isInGeneralUse(int channel)
{
    constexpr int lastOf2GHz = 14;
    constexpr int firstOfUpper5GHz = 149;
    return channel <= lastOf2GHz || channel >= firstOfUpper5GHz || channel % 4 == 0;
}

enum class TickImportance { InUse, Landmark, MinorLandmark, Other };

TickImportance importanceOf(const ChannelViewGeometry::Tick& tick)
{
    static constexpr std::array landmarks { 1, 6, 11, 36, 100, 149 };
    static constexpr std::array minorLandmarks { 44, 52, 60, 108, 116, 124, 132, 140, 157 };
    const auto contains = [&tick](const auto& channels) {
        return std::find(channels.begin(), channels.end(), tick.channel) != channels.end();
    };
    if (tick.isInUse)
        return TickImportance::InUse;
    if (contains(landmarks))
        return TickImportance::Landmark;
    return contains(minorLandmarks) ? TickImportance::MinorLandmark : TickImportance::Other;
}

// Where the numbers of a band are too close, leaves those of the channels in use and of the landmarks, as far as they
// fit.
void thinOutLabels(std::vector<ChannelViewGeometry::Tick>& ticks, int minGap)
{
    using Tick = ChannelViewGeometry::Tick;
    const auto overlap = [minGap](const Tick& one, const Tick& other) {
        return one.label.adjusted(-minGap / 2.0, 0, minGap / 2.0, 0).intersects(other.label);
    };
    if (std::adjacent_find(ticks.begin(), ticks.end(), overlap) == ticks.end())
        return;
    std::vector<Tick*> byImportance;
    for (Tick& tick : ticks)
        byImportance.push_back(&tick);
    std::stable_sort(byImportance.begin(), byImportance.end(),
        [](const Tick* one, const Tick* other) { return importanceOf(*one) < importanceOf(*other); });
    std::vector<const Tick*> labelled;
    for (Tick* const tick : byImportance) {
        const bool fits
            = std::none_of(labelled.begin(), labelled.end(), [&](const Tick* other) { return overlap(*tick, *other); });
        if (fits && importanceOf(*tick) != TickImportance::Other)
            labelled.push_back(tick);
        else
            tick->label = {};
    }
}

} // namespace

ChannelViewGeometry::ChannelViewGeometry(
    const QRectF& contents, const QFontMetrics& metrics, const ChannelViewModel& model)
    : gap(std::max(2, metrics.height() / 3))
    , labelHeight(metrics.height())
{
    placeAxes(contents, metrics);
    placePanes(contents, metrics, model);
    placeCurves(model);
    placeTicks(metrics);
}

void ChannelViewGeometry::placeAxes(const QRectF& contents, const QFontMetrics& metrics)
{
    const double line = metrics.height();
    const bool hasTitles = contents.height() >= line * minLinesForTitles;
    const bool hasSignalTitle
        = hasTitles && contents.width() >= metrics.averageCharWidth() * minCharactersForSignalTitle;
    const QRectF inner = contents.adjusted(gap, gap, -gap, -gap);
    double left = inner.left();
    if (hasSignalTitle)
        left += line;
    const double labelsWidth = metrics.horizontalAdvance(QStringLiteral("100"));
    const double top = inner.top() + labelHeight + gap / 2.0;
    const double bottom = inner.bottom() - line * (hasTitles ? 2 : 1) - gap / 2.0;
    area = QRectF(QPointF(left + labelsWidth + gap, top), inner.bottomRight());
    area.setWidth(std::max(1.0, area.width()));
    area.setHeight(std::max(1.0, bottom - top));
    signalLabels = QRectF(left, area.top(), labelsWidth, area.height());
    if (hasSignalTitle)
        signalTitle = QRectF(inner.left(), area.top(), line, area.height());
}

void ChannelViewGeometry::placePanes(const QRectF& contents, const QFontMetrics& metrics, const ChannelViewModel& model)
{
    RangesInUse inUse {};
    bool has5GHz = false;
    for (const ChannelViewNetwork& network : model.networks) {
        if (const auto range = channelRangeOf(network.frequencyKhz)) {
            inUse[*range] = true;
            has5GHz = has5GHz || channelRanges[*range].band == ChannelBand::Band5GHz;
        }
    }
    const std::size_t rangeCount = has5GHz ? channelRanges.size() : 1;
    const double paneGap = metrics.height();
    const double breakWidth = metrics.averageCharWidth();
    double weights = 0;
    for (std::size_t range = 0; range < rangeCount; ++range)
        weights += weightOf(range, inUse);
    const double gaps = has5GHz ? paneGap + breakWidth * static_cast<double>(rangeCount - 2) : 0;
    const double pixelsPerWeight = std::max(0.0, area.width() - gaps) / weights;

    double x = area.left();
    for (std::size_t range = 0; range < rangeCount; ++range) {
        const ChannelRange& channels = channelRanges[range];
        const bool isNewPane = panes.empty() || panes.back().band != channels.band;
        if (range > 0)
            x += isNewPane ? paneGap : breakWidth;
        if (isNewPane)
            panes.push_back({ channels.band, QRectF(x, area.top(), 0, area.height()), {}, {}, {} });
        const double right = x + pixelsPerWeight * weightOf(range, inUse);
        panes.back().ranges.push_back({ channels, x, right });
        panes.back().area.setRight(right);
        x = right;
    }
    const double titleTop = area.bottom() + gap / 2.0 + metrics.height();
    for (Pane& pane : panes) {
        const QString name = bandName(pane.band);
        const QString title = QCoreApplication::translate("ChannelView", "%1 channels").arg(name);
        pane.titleText = metrics.horizontalAdvance(title) <= pane.area.width() ? title : name;
        if (titleTop + metrics.height() <= contents.bottom())
            pane.title = QRectF(pane.area.left(), titleTop, pane.area.width(), metrics.height());
    }
}

void ChannelViewGeometry::placeCurves(const ChannelViewModel& model)
{
    for (const ChannelViewNetwork& network : model.networks) {
        if (!isDrawn(network))
            continue;
        const double x = *xOfFrequency(network.frequencyKhz);
        const double left = *xOfFrequency(network.frequencyKhz - channelHalfWidthKhz);
        // A network with signal 0 must still be visible and clickable.
        const double y = std::min(yOfSignal(network.signal), area.bottom() - gap / 2.0);
        curves.push_back({ &network, left, 2 * x - left, QPointF(x, y), 0 });
    }
    std::sort(curves.begin(), curves.end(),
        [](const Curve& one, const Curve& other) { return isStronger(*one.network, *other.network); });
    for (auto curve = curves.begin(); curve != curves.end(); ++curve) {
        curve->rankOnChannel = static_cast<int>(std::count_if(curves.begin(), curve,
            [curve](const Curve& each) { return each.network->frequencyKhz == curve->network->frequencyKhz; }));
    }
}

void ChannelViewGeometry::placeTicks(const QFontMetrics& metrics)
{
    for (const Pane& pane : panes) {
        std::vector<Tick> ticksOfPane;
        for (const auto& [channel, frequencyKhz] : ChannelFreqTable) {
            const auto x = xOfFrequency(frequencyKhz);
            const bool isInUse = isChannelInUse(frequencyKhz);
            if (!x || *x < pane.area.left() || *x > pane.area.right() || (!isInUse && !isInGeneralUse(channel)))
                continue;
            const double width = metrics.horizontalAdvance(QString::number(channel));
            const QRectF label(*x - width / 2, area.bottom() + gap / 2.0, width, metrics.height());
            ticksOfPane.push_back({ channel, *x, isInUse, label });
        }
        thinOutLabels(ticksOfPane, gap);
        ticks.insert(ticks.end(), ticksOfPane.begin(), ticksOfPane.end());
    }
}

bool ChannelViewGeometry::isChannelInUse(std::uint32_t frequencyKhz) const
{
    return std::any_of(curves.begin(), curves.end(),
        [frequencyKhz](const Curve& curve) { return curve.network->frequencyKhz == frequencyKhz; });
}

double ChannelViewGeometry::yOfSignal(double signal) const
{
    return area.bottom() - area.height() * std::clamp(signal, 0.0, maxSignal) / maxSignal;
}

std::optional<double> ChannelViewGeometry::xOfFrequency(std::uint32_t frequencyKhz) const
{
    for (const Pane& pane : panes) {
        for (const Range& range : pane.ranges) {
            const auto& [band, low, high] = range.channels;
            if (frequencyKhz >= low && frequencyKhz <= high)
                return range.left + (range.right - range.left) * (frequencyKhz - low) / (high - low);
        }
    }
    return std::nullopt;
}

const ChannelViewGeometry::Pane& ChannelViewGeometry::paneOf(const Curve& curve) const
{
    return curve.peak.x() <= panes.front().area.right() ? panes.front() : panes.back();
}

std::optional<double> ChannelViewGeometry::outlineY(const Curve& curve, double x) const
{
    if (x < curve.left || x > curve.right || curve.right <= curve.left)
        return std::nullopt;
    const double offset = (x - curve.peak.x()) / (curve.right - curve.peak.x());
    return area.bottom() - (area.bottom() - curve.peak.y()) * (1 - offset * offset);
}

const ChannelViewGeometry::Curve* ChannelViewGeometry::curveAt(const QPointF& point) const
{
    const Curve* nearest = nullptr;
    double nearestDistance = 0;
    for (const Curve& curve : curves) {
        const auto y = outlineY(curve, point.x());
        if (!y || point.y() < *y - gap || point.y() > area.bottom() + gap)
            continue;
        const double distance = std::abs(point.y() - *y);
        if (nearest == nullptr || distance < nearestDistance) {
            nearest = &curve;
            nearestDistance = distance;
        }
    }
    return nearest;
}
