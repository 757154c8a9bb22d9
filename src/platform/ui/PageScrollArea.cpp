#include "platform/ui/PageScrollArea.h"

#include <QAbstractButton>
#include <QApplication>
#include <QScrollBar>
#include <QTabWidget>

namespace {

bool takesFocusByTab(const QWidget& widget)
{
    return (widget.focusPolicy() & Qt::TabFocus) != 0 && widget.isVisible() && widget.isEnabled();
}

bool isButton(const QWidget* widget)
{
    return qobject_cast<const QAbstractButton*>(widget) != nullptr;
}

// In tab order; nullptr if the page has none.
QWidget* firstControlOtherThanButtons(QWidget& page)
{
    for (QWidget* widget = page.nextInFocusChain(); widget != &page; widget = widget->nextInFocusChain()) {
        if (page.isAncestorOf(widget) && takesFocusByTab(*widget) && !isButton(widget))
            return widget;
    }
    return nullptr;
}

} // namespace

PageScrollArea::PageScrollArea(QWidget& page, MinWidth minWidth, QWidget* parent)
    : QScrollArea(parent)
    , m_minWidth(minWidth)
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
PageScrollArea::~PageScrollArea()
{
    disconnect(qApp, nullptr, this, nullptr);
}

void PageScrollArea::wrapTab(QTabWidget& tabs, QWidget& page, MinWidth minWidth)
{
    const int index = tabs.indexOf(&page);
    const QString title = tabs.tabText(index);
    tabs.removeTab(index);
    tabs.insertTab(index, new PageScrollArea(page, minWidth), title);
    tabs.setCurrentIndex(0);
}

// QScrollArea limits its own to a few lines.
QSize PageScrollArea::sizeHint() const
{
    return widget()->sizeHint();
}

QSize PageScrollArea::minimumSizeHint() const
{
    const QSize minimum = QScrollArea::minimumSizeHint();
    if (m_minWidth == MinWidth::Any)
        return minimum;
    return { widget()->minimumSizeHint().width() + verticalScrollBar()->sizeHint().width(), minimum.height() };
}

void PageScrollArea::showFocus(QWidget* focus)
{
    if (focus != nullptr && widget() != nullptr && widget()->isAncestorOf(focus))
        ensureWidgetVisible(focus);
}

void PageScrollArea::leaveButtons()
{
    QWidget* const focus = QApplication::focusWidget();
    if (!isButton(focus) || !isAncestorOf(focus))
        return;
    if (QWidget* const control = firstControlOtherThanButtons(*widget()))
        control->setFocus(Qt::TabFocusReason);
    else
        focus->clearFocus();
}
