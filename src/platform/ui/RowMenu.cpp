#include "platform/ui/RowMenu.h"

#include "platform/ui/CellDelegate.h"
#include "platform/ui/TableView.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QPushButton>

RowMenu::RowMenu(TableView& table, const std::vector<QPushButton*>& buttons, QWidget& area)
    : QMenu(&table)
    , m_table(table)
{
    setObjectName(QStringLiteral("rowMenu"));
    for (QPushButton* const button : buttons) {
        QAction* const action = addAction(button->text(), button, &QPushButton::click);
        connect(this, &QMenu::aboutToShow, action, [action, button] { action->setEnabled(button->isEnabled()); });
    }
    setDefaultAction(actions().constFirst());
    addSeparator();
    m_copy = addAction(tr("Cop&y"), this, &RowMenu::copyRow);
    m_copy->setShortcut(QKeySequence::Copy);
    m_copy->setShortcutContext(Qt::WidgetWithChildrenShortcut); // other widgets copy their own text
    area.addAction(m_copy);
    connect(&table, &TableView::rowMenuRequested, this, [this](const QPoint& position) {
        if (m_copy->isEnabled())
            popup(position);
    });
}

void RowMenu::setBlocked(bool blocked)
{
    close();
    m_copy->setEnabled(!blocked);
}

void RowMenu::copyRow() const
{
    if (m_table.selectedRow() < 0)
        return;
    const int row = m_table.selectionModel()->selectedRows().first().row();
    const QHeaderView& header = *m_table.horizontalHeader();
    QStringList texts;
    for (int position = 0; position < header.count(); ++position) {
        const QModelIndex index = m_table.model()->index(row, header.logicalIndex(position));
        const auto* const delegate = qobject_cast<const CellDelegate*>(m_table.itemDelegateForIndex(index));
        if (delegate != nullptr && index.data().isValid()) // a picture has no text
            texts.append(delegate->textOf(index.data()));
    }
    QGuiApplication::clipboard()->setText(texts.join(u'\t'));
}
