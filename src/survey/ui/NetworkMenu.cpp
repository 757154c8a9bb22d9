#include "survey/ui/NetworkMenu.h"

#include <QKeySequence>

NetworkMenu::NetworkMenu(const QString& connectText, const QString& addProfileText, QWidget& views)
{
    setDefaultAction(addAction(connectText, this, &NetworkMenu::connectChosen)); // the action of a double click
    addAction(addProfileText, this, &NetworkMenu::addProfileChosen);
    QAction* const copy = addAction(tr("Cop&y"), this, &NetworkMenu::copyChosen);
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetWithChildrenShortcut); // other widgets copy their own text
    views.addAction(copy);
}

void NetworkMenu::setActionsEnabled(bool enabled)
{
    close();
    const auto all = actions();
    for (QAction* const action : all)
        action->setEnabled(enabled);
}
