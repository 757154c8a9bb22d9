#pragma once

#include "monitor/LinkFigures.h"

#include <QColor>

// The curves of the link plot.
enum class LinkSeries {
    LinkQuality,
    SignalStrength,
    Transmit,
    Receive,
};

// Of two opaque colours, 1 to 21, as WCAG 2.1 defines it.
[[nodiscard]] double contrastRatio(const QColor& one, const QColor& other);

// What WCAG 2.1 asks of a graphic that carries meaning.
inline constexpr double sufficientContrast = 3.0;

// The colours for a background: darker ones for a light base, lighter ones for a dark base.
[[nodiscard]] QColor seriesColour(LinkSeries series, const QColor& base);
[[nodiscard]] QColor gradeColour(LinkGrade grade, const QColor& base);

// A colour between two: weight 0 is the first, 1 the second.
[[nodiscard]] QColor blend(const QColor& first, const QColor& second, double weight);
