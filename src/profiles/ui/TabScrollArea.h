#pragma once

#include <QScrollArea>

class QTabWidget;

// A page of a sheet's tabs that is scrolled where it does not fit. The sheet opens large enough to show all of it if the
// screen is.
class TabScrollArea final : public QScrollArea {
    Q_OBJECT

public:
    // Puts the page into a scroll area in its place.
    static void wrap(QTabWidget& tabs, QWidget& page);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override; // as wide as the page: it is scrolled vertically only

private:
    explicit TabScrollArea(QWidget& page);
    ~TabScrollArea() override;
    void showFocus(QWidget* focus);
};
