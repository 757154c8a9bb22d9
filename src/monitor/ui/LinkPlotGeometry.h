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

// One curve's value of a sample as a share of the plot's height, 0 to 1; nothing where the sample has none.
[[nodiscard]] std::optional<double> heightOf(LinkSeries series, const LinkSample& sample, const ThroughputScale& scale);

// Where the parts of the plot lie, for a font and a size. The legend takes as many lines as it needs.
struct LinkPlotGeometry {
    struct LegendEntry {
        LinkSeries series;
        QRect swatch;
        QRect text;
    };

    LinkPlotGeometry(const QRect& contents, const QFontMetrics& metrics, const ThroughputScale& scale);

    QRect area; // between the axes
    QRect percentUnit;
    QRect throughputUnit;
    std::vector<LegendEntry> legend;
    int gap; // between neighbouring parts

    // Device-independent pixels; age in ticks, height 0 to 1.
    [[nodiscard]] double xOfAge(double age) const;
    [[nodiscard]] double yOfHeight(double height) const;
    // The unbroken runs of a curve, newest point first. A run of one point is a lone sample between gaps.
    [[nodiscard]] std::vector<std::vector<QPointF>> runs(
        LinkSeries series, const LinkHistory& history, const ThroughputScale& scale) const;
};
