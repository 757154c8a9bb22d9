#pragma once

#include "monitor/LinkHistory.h"

#include <QFrame>

#include <optional>

class QPainter;
struct LinkPlotGeometry;
struct ThroughputScale;

// The link of the last five minutes: link quality and signal strength on the percent axis at the left, throughputs on
// the axis at the right, which follows the largest value shown. Colours and sizes come from the palette and the font;
// curves differ by dashes and end marks too. The accessible description holds the newest values.
class LinkPlot : public QFrame {
    Q_OBJECT

public:
    explicit LinkPlot(QWidget* parent = nullptr);

    // One tick; nullopt where there was no link.
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
