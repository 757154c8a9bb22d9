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

// The contrast ratio of two opaque colours as defined by WCAG 2.1, from 1 to 21.
[[nodiscard]] double contrastRatio(const QColor& one, const QColor& other);

// Dark colours for a light base, light colours for a dark base. The contrast is at least 3, which WCAG 2.1 requires for
// meaningful graphics.
[[nodiscard]] QColor seriesColour(LinkSeries series, const QColor& base);
[[nodiscard]] QColor gradeColour(LinkGrade grade, const QColor& base);

// Interpolates between two colours: weight 0 is the first, 1 the second.
[[nodiscard]] QColor blend(const QColor& first, const QColor& second, double weight);
