#pragma once

#include <QColor>

class QPainter;
class QPalette;
class QRect;
class QString;
class QWidget;

// The colour of a text that stands in for something missing. Taken from the text colour, because some dark colour
// schemes leave QPalette::PlaceholderText dark.
[[nodiscard]] QColor faintTextColour(const QPalette& palette);

// Paints the text into the centre of an empty view, wrapped, with a margin of one line around it.
void paintFaintText(QPainter& painter, const QWidget& view, const QRect& rect, const QString& text);
