#include "platform/ui/WindowTickClock.h"

#include <QApplication>
#include <QCoreApplication>
#include <QEvent>
#include <QWidget>

namespace {

// QWidget::repaint() skips the parts of a window that opaque children cover, such as the viewport of a table.
void repaintWithChildren(QWidget& window)
{
    const auto children = window.findChildren<QWidget*>();
    for (QWidget* const child : children)
        child->update();
    window.repaint();
}

void paintWindows()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::UpdateRequest);
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* const window : windows) {
        if (window->isVisible())
            repaintWithChildren(*window);
    }
}

} // namespace

WindowTickClock::WindowTickClock(TickClock& sleeper)
    : m_sleeper(sleeper)
{
}

void WindowTickClock::Delay(std::uint32_t numTicks)
{
    if (numTicks < ticksPerSecond) {
        m_sleeper.Delay(numTicks);
        return;
    }
    QApplication::setOverrideCursor(Qt::WaitCursor);
    paintWindows();
    m_sleeper.Delay(numTicks);
    QApplication::restoreOverrideCursor();
}
