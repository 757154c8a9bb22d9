#include "profiles/ui/TabScrollArea.h"

#include <QApplication>
#include <QScrollBar>
#include <QTabWidget>

TabScrollArea::TabScrollArea(QWidget& page)
{
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus); // the page's controls are the tab stops
    setWidgetResizable(true);
    setWidget(&page);
    // The tab's background shows through.
    viewport()->setAutoFillBackground(false);
    page.setAutoFillBackground(false);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* focus) { showFocus(focus); });
}

// The focus moves while the children are destroyed, when this is no longer a scroll area.
TabScrollArea::~TabScrollArea()
{
    disconnect(qApp, nullptr, this, nullptr);
}

void TabScrollArea::wrap(QTabWidget& tabs, QWidget& page)
{
    const int index = tabs.indexOf(&page);
    const QString title = tabs.tabText(index);
    tabs.removeTab(index);
    tabs.insertTab(index, new TabScrollArea(page), title);
    tabs.setCurrentIndex(0);
}

// QScrollArea limits its own to a few lines.
QSize TabScrollArea::sizeHint() const
{
    return widget()->sizeHint();
}

QSize TabScrollArea::minimumSizeHint() const
{
    const int width = widget()->minimumSizeHint().width() + verticalScrollBar()->sizeHint().width();
    return { width, QScrollArea::minimumSizeHint().height() };
}

void TabScrollArea::showFocus(QWidget* focus)
{
    if (focus != nullptr && widget()->isAncestorOf(focus))
        ensureWidgetVisible(focus);
}
