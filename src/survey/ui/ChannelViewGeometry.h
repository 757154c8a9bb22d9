#pragma once

#include "survey/ChannelBands.h"
#include "survey/ChannelViewModel.h"

#include <QFontMetrics>
#include <QPointF>
#include <QRectF>
#include <QString>

#include <optional>
#include <vector>

// The layout of the channel view for a font, a size and the networks shown. Device-independent pixels.
struct ChannelViewGeometry {
    // A part of the axis to scale. The axis is broken between two ranges.
    struct Range {
        ChannelRange channels;
        double left;
        double right;
    };
    // The 2.4 GHz band is always shown, the 5 GHz band only if it has networks.
    struct Pane {
        ChannelBand band;
        QRectF area;
        std::vector<Range> ranges;
        QRectF title; // empty if it does not fit
        QString titleText;
    };
    struct Tick {
        int channel;
        double x;
        bool isInUse;
        QRectF label; // empty if it does not fit
    };
    // A parabola of one channel's width over the axis, as high as the signal.
    struct Curve {
        const ChannelViewNetwork* network;
        double left;
        double right;
        QPointF peak;
        int rankOnChannel; // 0: the strongest network of its channel
    };

    // The curves point into the model.
    ChannelViewGeometry(const QRectF& contents, const QFontMetrics& metrics, const ChannelViewModel& model);

    int gap; // between neighbouring parts
    QRectF area; // between the axes; names may go above it by labelHeight
    double labelHeight;
    QRectF signalLabels; // left of the signal axis
    QRectF signalTitle; // drawn rotated; empty if it does not fit
    std::vector<Pane> panes;
    std::vector<Tick> ticks;
    std::vector<Curve> curves; // the strongest first

    [[nodiscard]] double yOfSignal(double signal) const;
    [[nodiscard]] std::optional<double> xOfFrequency(std::uint32_t frequencyKhz) const;
    [[nodiscard]] const Pane& paneOf(const Curve& curve) const;
    // Height of the outline at x; nothing left and right of the curve.
    [[nodiscard]] std::optional<double> outlineY(const Curve& curve, double x) const;
    // The curve hit by a click at a point: the one with the nearest outline, among the curves that contain the
    // point or miss it by no more than the gap. The stronger one if two are equally near. nullptr: no curve.
    [[nodiscard]] const Curve* curveAt(const QPointF& point) const;

private:
    void placeAxes(const QRectF& contents, const QFontMetrics& metrics);
    void placePanes(const QRectF& contents, const QFontMetrics& metrics, const ChannelViewModel& model);
    void placeCurves(const ChannelViewModel& model);
    void placeTicks(const QFontMetrics& metrics);
    [[nodiscard]] bool isChannelInUse(std::uint32_t frequencyKhz) const;
};
