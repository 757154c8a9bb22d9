#pragma once

#include <QScrollArea>

class QTabWidget;

// The place of a page in its tab. A page that does not fit is scrolled, and the control with the focus stays visible. A
// sheet with such pages opens large enough for its largest page, as far as the screen allows.
class PageScrollArea final : public QScrollArea {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(PageScrollArea)

public:
    enum class MinWidth {
        Any, // the page is scrolled in both directions
        OfPage, // vertically only
    };

    explicit PageScrollArea(QWidget& page, MinWidth minWidth, QWidget* parent = nullptr);
    ~PageScrollArea() override;

    // Wraps a tab's page in a scroll area and selects the first tab.
    static void wrapTab(QTabWidget& tabs, QWidget& page, MinWidth minWidth);

    // If a button has the focus, moves it to the page's first other control, so a stray Space presses nothing.
    void leaveButtons();

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

private:
    void showFocus(QWidget* focus);

    MinWidth m_minWidth;
};
