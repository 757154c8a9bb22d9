#include "monitor/ui/LinkPlotGeometry.h"

#include <QCoreApplication>

#include <algorithm>

namespace {

constexpr double maxPercent = 100.0;
constexpr int swatchWidthInLines = 2;

std::optional<double> throughputHeight(const std::optional<std::uint32_t>& kbps, const ThroughputScale& scale)
{
    if (!kbps.has_value())
        return std::nullopt;
    return std::min(1.0, static_cast<double>(*kbps) / scale.topKbps());
}

int throughputLabelWidth(const QFontMetrics& metrics, const ThroughputScale& scale)
{
    return std::max(metrics.horizontalAdvance(scale.unitText()),
        metrics.horizontalAdvance(scale.labelText(ThroughputScale::divisions)));
}

} // namespace

QString seriesName(LinkSeries series)
{
    switch (series) {
    case LinkSeries::LinkQuality:
        return QCoreApplication::translate("LinkPlot", "Link quality");
    case LinkSeries::SignalStrength:
        return QCoreApplication::translate("LinkPlot", "Signal strength");
    case LinkSeries::Transmit:
        return QCoreApplication::translate("LinkPlot", "Transmit");
    case LinkSeries::Receive:
        return QCoreApplication::translate("LinkPlot", "Receive");
    }
    return {};
}

std::optional<double> heightOf(LinkSeries series, const LinkSample& sample, const ThroughputScale& scale)
{
    switch (series) {
    case LinkSeries::LinkQuality:
        return std::min(1.0, sample.linkQualityPercent / maxPercent);
    case LinkSeries::SignalStrength:
        return std::min(1.0, sample.signalPercent / maxPercent);
    case LinkSeries::Transmit:
        return throughputHeight(sample.transmitKbps, scale);
    case LinkSeries::Receive:
        return throughputHeight(sample.receiveKbps, scale);
    }
    return std::nullopt;
}

LinkPlotGeometry::LinkPlotGeometry(const QRect& contents, const QFontMetrics& metrics, const ThroughputScale& scale)
    : gap(std::max(2, metrics.height() / 3))
{
    const int line = metrics.height();
    const QRect inner = contents.adjusted(gap, gap, -gap, -gap);
    const int left = inner.left() + metrics.horizontalAdvance(QStringLiteral("100")) + gap;
    const int right = inner.right() - throughputLabelWidth(metrics, scale) - gap;

    int x = left;
    int y = inner.top();
    for (const LinkSeries series : linkSeries) {
        const int swatchWidth = line * swatchWidthInLines;
        const int textWidth = metrics.horizontalAdvance(seriesName(series));
        const int entryWidth = swatchWidth + gap + textWidth;
        if (x != left && x + entryWidth > right) {
            x = left;
            y += line;
        }
        legend.push_back({ series, QRect(x, y, swatchWidth, line), QRect(x + swatchWidth + gap, y, textWidth, line) });
        x += entryWidth + 3 * gap;
    }
    percentUnit = QRect(inner.left(), y, left - gap - inner.left(), line);
    throughputUnit = QRect(right + gap, y, inner.right() - right - gap + 1, line);

    // The labels of the top and bottom grid lines extend half a line beyond the area. The time labels are below.
    const int top = y + line + line / 2 + gap / 2;
    const int bottom = inner.bottom() - line - line / 2;
    area = QRect(QPoint(left, top), QPoint(std::max(left + 1, right), std::max(top + 1, bottom)));
}

double LinkPlotGeometry::xOfAge(double age) const
{
    return area.right() - area.width() * age / static_cast<double>(LinkHistory::capacity);
}

double LinkPlotGeometry::yOfHeight(double height) const
{
    return area.bottom() - (area.height() - 1) * height;
}

std::vector<std::vector<QPointF>> LinkPlotGeometry::runs(
    LinkSeries series, const LinkHistory& history, const ThroughputScale& scale) const
{
    std::vector<std::vector<QPointF>> result;
    bool inRun = false;
    for (std::size_t age = 0; age < history.size(); ++age) {
        const auto sample = history.at(age);
        const auto height = sample.has_value() ? heightOf(series, *sample, scale) : std::nullopt;
        if (height.has_value()) {
            if (!inRun)
                result.emplace_back();
            result.back().emplace_back(xOfAge(static_cast<double>(age)), yOfHeight(*height));
        }
        inRun = height.has_value();
    }
    return result;
}
