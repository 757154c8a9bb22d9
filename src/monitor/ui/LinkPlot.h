#pragma once

#include "monitor/LinkHistory.h"

#include <QFrame>

#include <optional>

class QPainter;
struct LinkPlotGeometry;
struct ThroughputScale;

// Plots the last five minutes of the link: link quality and signal strength on the percent axis on the left,
// throughputs on the axis on the right, which scales to the largest value. Colours and sizes follow the palette and the
// font. Curves also differ by dash pattern and end mark. The accessible description contains the newest values.
class LinkPlot : public QFrame {
    Q_OBJECT

public:
    explicit LinkPlot(QWidget* parent = nullptr);

    // Appends one tick; std::nullopt if there was no link.
    void append(const std::optional<LinkSample>& sample);
    [[nodiscard]] const LinkHistory& history() const { return m_history; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void drawGrid(QPainter& painter, const LinkPlotGeometry& geometry) const;
    void drawAxisLabels(QPainter& painter, const LinkPlotGeometry& geometry, const ThroughputScale& scale) const;
    void drawTimeLabels(QPainter& painter, const LinkPlotGeometry& geometry) const;
    void drawLegend(QPainter& painter, const LinkPlotGeometry& geometry) const;
    void drawCurves(QPainter& painter, const LinkPlotGeometry& geometry, const ThroughputScale& scale) const;

    LinkHistory m_history;
};
