#pragma once

#include <QProgressBar>

// A bar of 0 to 100 percent in the colour of its grade, with marks where the grades begin. The grade is also shown as
// text beside it by the page. Value and range are those of a progress bar, also for assistive technology.
class LevelIndicator : public QProgressBar {
    Q_OBJECT

public:
    explicit LevelIndicator(QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};
