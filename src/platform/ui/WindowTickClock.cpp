#include "platform/ui/WindowTickClock.h"

#include <QApplication>
#include <QCoreApplication>
#include <QEvent>
#include <QWidget>

namespace {

void paintWindows()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::UpdateRequest);
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* const window : windows) {
        if (window->isVisible())
            window->repaint();
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
