#pragma once

#include <QColor>
#include <QPalette>

// The colour of a text that stands in for something missing. Taken from the text colour, because some dark colour
// schemes leave QPalette::PlaceholderText dark.
inline QColor faintTextColour(const QPalette& palette)
{
    constexpr float opacity = 0.6F;
    QColor colour = palette.color(QPalette::Text);
    colour.setAlphaF(opacity * colour.alphaF());
    return colour;
}
