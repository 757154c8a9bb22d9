#pragma once

#include "monitor/LinkHistory.h"
#include "monitor/PlotScale.h"
#include "monitor/ui/LinkColours.h"

#include <QFontMetrics>
#include <QPointF>
#include <QRect>
#include <QString>

#include <array>
#include <optional>
#include <vector>

inline constexpr std::array linkSeries { LinkSeries::LinkQuality, LinkSeries::SignalStrength, LinkSeries::Transmit,
    LinkSeries::Receive };

[[nodiscard]] QString seriesName(LinkSeries series);

// The height of a sample on a curve, 0 to 1; std::nullopt if the sample has no such value.
[[nodiscard]] std::optional<double> heightOf(LinkSeries series, const LinkSample& sample, const ThroughputScale& scale);

// The layout of the plot for a size and a font. The legend uses as many lines as it needs.
struct LinkPlotGeometry {
    struct LegendEntry {
        LinkSeries series;
        QRect swatch;
        QRect text;
    };

    LinkPlotGeometry(const QRect& contents, const QFontMetrics& metrics, const ThroughputScale& scale);

    QRect area; // between the axes
    QRect percentUnit; // above the labels of the axis
    QRect throughputUnit;
    std::vector<LegendEntry> legend;
    int gap; // between parts

    // Device-independent pixels; age in ticks, height 0 to 1.
    [[nodiscard]] double xOfAge(double age) const;
    [[nodiscard]] double yOfHeight(double height) const;
    // The parts of a curve between gaps, newest first. A part may be a single point.
    [[nodiscard]] std::vector<std::vector<QPointF>> runs(
        LinkSeries series, const LinkHistory& history, const ThroughputScale& scale) const;
};
