#pragma once

#include <QScrollArea>

// The place of a page in its tab. A page that does not fit is scrolled, and the control with the focus stays visible.
class PageScrollArea final : public QScrollArea {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(PageScrollArea)

public:
    explicit PageScrollArea(QWidget* page, QWidget* parent = nullptr);
    ~PageScrollArea() override;

    // If a button has the focus, moves it to the page's first other control, so a stray Space presses nothing.
    void leaveButtons();

private:
    void showFocus(QWidget* focus);
};
