#pragma once

#include "survey/ui/ChannelViewGeometry.h"

#include <QFontMetrics>
#include <QRectF>
#include <QString>

#include <vector>

// The name of a network beside the peak of its curve.
struct ChannelViewLabel {
    const ChannelViewGeometry::Curve* curve;
    QRectF box;
    QRectF mark; // the mark of the joined network; empty for the others
    QRectF textBox;
    QString text; // elided if it does not fit
    bool isElided;
};

// Places names so that they do not overlap: the joined network's first, then the strongest. A crowded name moves up or
// down by whole lines, is elided, or is left out. The selected network is always named; names in
// its way are left out. The labels point into the geometry.
[[nodiscard]] std::vector<ChannelViewLabel> placeChannelViewLabels(
    const ChannelViewGeometry& geometry, const ChannelViewModel& model, const QFontMetrics& metrics);

// The network whose name or curve lies at a point; nullptr: none.
[[nodiscard]] const ChannelViewNetwork* networkAt(
    const QPointF& point, const ChannelViewGeometry& geometry, const std::vector<ChannelViewLabel>& labels);
