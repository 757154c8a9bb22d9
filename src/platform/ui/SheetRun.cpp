#include "platform/ui/SheetRun.h"

#include "platform/ui/ModalSheets.h"

#include <QDialog>
#include <QPointer>
#include <QPushButton>

int runSheetOverPage(ModalSheets& sheets, QDialog& sheet, const QWidget& page, std::vector<QPushButton*> actions)
{
    std::erase_if(actions, [](const QPushButton* action) { return !action->isEnabled(); });
    const QPointer<QWidget> focus = page.window()->focusWidget();
    const std::vector<QPointer<QPushButton>> disabled(actions.begin(), actions.end());
    for (QPushButton* const action : actions)
        action->setEnabled(false);
    const int code = sheets.runModalForWindow(sheet, *page.window());
    for (const QPointer<QPushButton>& action : disabled)
        if (action) // the page may have been destroyed
            action->setEnabled(true);
    if (focus)
        focus->setFocus(); // a disabled button has lost it
    return code;
}
