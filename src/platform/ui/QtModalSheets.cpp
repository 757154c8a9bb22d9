#include "platform/ui/QtModalSheets.h"

#include <QAbstractButton>
#include <QDialog>
#include <QDialogButtonBox>
#include <QEvent>
#include <QKeyEvent>

namespace {

QAbstractButton* cancelButton(const QDialog& sheet)
{
    const auto boxes = sheet.findChildren<QDialogButtonBox*>();
    for (const QDialogButtonBox* const box : boxes) {
        const auto buttons = box->buttons();
        for (QAbstractButton* const button : buttons) {
            if (box->buttonRole(button) == QDialogButtonBox::RejectRole && button->isEnabled())
                return button;
        }
    }
    return nullptr;
}

// The Cancel action of a sheet releases what opening it has acquired, so Escape and closing the window must trigger it
// too.
class CancelFilter final : public QObject {
public:
    explicit CancelFilter(QDialog& sheet)
        : m_sheet(sheet)
    {
        sheet.installEventFilter(this);
    }

    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        const bool escape
            = event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->matches(QKeySequence::Cancel);
        if (!escape && event->type() != QEvent::Close)
            return false;
        QAbstractButton* const cancel = m_sheet.isVisible() ? cancelButton(m_sheet) : nullptr;
        if (cancel == nullptr)
            return false;
        event->ignore();
        cancel->click();
        return true;
    }

private:
    QDialog& m_sheet;
};

} // namespace

int QtModalSheets::runModalForWindow(QDialog& sheet, QWidget& mainWindow)
{
    if (sheet.parentWidget() != &mainWindow)
        sheet.setParent(&mainWindow, Qt::Sheet);
    sheet.setWindowModality(Qt::WindowModal);
    const CancelFilter filter(sheet);
    m_running.emplace_back(&sheet);
    const int code = sheet.exec();
    m_running.pop_back();
    return code;
}

void QtModalSheets::stopModalWithCode(int code)
{
    if (!m_running.empty() && m_running.back())
        m_running.back()->done(code);
}
