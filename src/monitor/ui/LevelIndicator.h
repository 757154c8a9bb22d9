#pragma once

#include <QProgressBar>

// A bar in the colour of its grade, with marks at the grade thresholds. Screen readers see a progress bar. Because
// colour must not be the only indication, the page also shows the grade as text.
class LevelIndicator final : public QProgressBar {
    Q_OBJECT

public:
    explicit LevelIndicator(QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};
