#pragma once

#include "survey/ui/ChannelViewGeometry.h"
#include "survey/ui/ChannelViewLabels.h"

#include <QColor>
#include <QPalette>

#include <vector>

class QPainter;
class QPainterPath;

// Draws the channel view in the colours of a palette. The joined and the selected network can be told from the others
// and from each other without colour: the joined one is filled and carries the list's mark, the selected one is hatched
// and its name is inverted; the lines of both are thick.
class ChannelViewPainter {
public:
    ChannelViewPainter(QPainter& painter, const QPalette& palette, QPalette::ColorGroup group);

    void paint(const ChannelViewModel& model, const ChannelViewGeometry& geometry,
        const std::vector<ChannelViewLabel>& labels) const;
    // Draws its own frame: the focus rectangles of some styles are filled, which would tint the whole view.
    void paintFocusFrame(const QRectF& contents, const ChannelViewGeometry& geometry) const;

private:
    using Curve = ChannelViewGeometry::Curve;

    void drawGrid(const ChannelViewGeometry& geometry) const;
    void drawAxisTexts(const ChannelViewGeometry& geometry) const;
    void drawCurve(const ChannelViewGeometry& geometry, const Curve& curve) const;
    void drawJoined(const ChannelViewGeometry& geometry, const Curve& curve, bool isSelected) const;
    void drawSelected(const ChannelViewGeometry& geometry, const Curve& curve) const;
    void drawHatching(const ChannelViewGeometry& geometry, const QPainterPath& outline) const;
    // From a peak to its name where the name lies further away.
    void drawLeaders(const ChannelViewGeometry& geometry, const std::vector<ChannelViewLabel>& labels) const;
    void drawLabel(const ChannelViewGeometry& geometry, const ChannelViewLabel& label, bool isSelected) const;

    [[nodiscard]] QColor textColour(double opacity = 1) const;
    // The highlight colour, or the text colour where the highlight does not stand out from the background.
    [[nodiscard]] QColor selectionColour() const;

    QPainter& m_painter;
    const QPalette& m_palette;
    QPalette::ColorGroup m_group;
};
