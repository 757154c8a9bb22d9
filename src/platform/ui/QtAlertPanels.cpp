#include "platform/ui/QtAlertPanels.h"

#include <QApplication>
#include <QLabel>
#include <QMessageBox>

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

void emphasiseTitle(QMessageBox& panel)
{
    auto* const title = panel.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
    if (title == nullptr)
        return;
    QFont font = title->font();
    font.setBold(true);
    title->setFont(font);
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
    emphasiseTitle(panel);
    panel.exec();
}
