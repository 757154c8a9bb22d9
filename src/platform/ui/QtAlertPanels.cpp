#include "platform/ui/QtAlertPanels.h"

#include <QApplication>
#include <QLabel>
#include <QMessageBox>

#include <algorithm>

namespace {

// The parent of a panel: the current modal window, the active window, or any visible window.
QWidget* currentWindow()
{
    if (auto* const modal = QApplication::activeModalWidget())
        return modal;
    if (auto* const active = QApplication::activeWindow())
        return active;
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* const window : windows) {
        if (window->isVisible() && window->windowType() == Qt::Window)
            return window;
    }
    return nullptr;
}

constexpr int maxCharactersPerLine = 60;

// A message box is only as wide as its title, which breaks the sentences below it into a narrow column. Not for the title
// itself: the box would take this width for that of its text, and cut the text off instead of wrapping it.
void widenForText(QLabel& label)
{
    const QFontMetrics metrics = label.fontMetrics();
    const int widest = metrics.averageCharWidth() * maxCharactersPerLine;
    label.setMinimumWidth(std::min(metrics.size(0, label.text()).width() + metrics.averageCharWidth(), widest));
}

void layOut(QMessageBox& panel)
{
    if (auto* const title = panel.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"))) {
        QFont font = title->font();
        font.setBold(true);
        title->setFont(font); // the message box wraps a title that is too wide for it
    }
    if (auto* const message = panel.findChild<QLabel*>(QStringLiteral("qt_msgbox_informativelabel")))
        widenForText(*message);
}

} // namespace

void QtAlertPanels::NSRunAlertPanel(const QString& title, const QString& message, const QString& defaultButton)
{
    QMessageBox panel(currentWindow());
    panel.setObjectName(QStringLiteral("AlertPanel"));
    panel.setWindowTitle(QApplication::applicationDisplayName());
    panel.setIcon(QMessageBox::Warning);
    panel.setTextFormat(Qt::PlainText);
    panel.setText(title);
    panel.setInformativeText(message);
    panel.setDefaultButton(panel.addButton(defaultButton, QMessageBox::AcceptRole));
    panel.setWindowModality(Qt::ApplicationModal);
    layOut(panel);
    panel.exec();
}
