#include "platform/ui/RowMenu.h"

#include "platform/ByteText.h"
#include "platform/ui/TableView.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QMenu>
#include <QPushButton>

#include <utility>

RowMenu::RowMenu(TableView& table, std::vector<QPushButton*> buttons)
    : QObject(&table)
    , m_table(table)
    , m_buttons(std::move(buttons))
    , m_copy(new QAction(tr("C&opy"), this))
{
    m_copy->setShortcut(QKeySequence::Copy);
    m_copy->setShortcutContext(Qt::WidgetShortcut); // the table itself would copy a single cell
    connect(m_copy, &QAction::triggered, this, [this] { copyRow(); });
    m_table.addAction(m_copy);
    m_table.setContextMenuPolicy(Qt::CustomContextMenu);
    connect(&m_table, &QWidget::customContextMenuRequested, this, [this](const QPoint& position) { open(position); });
}

void RowMenu::open(const QPoint& position)
{
    if (m_table.selectedRow() < 0)
        return;
    auto* const menu = new QMenu(&m_table);
    menu->setObjectName(QStringLiteral("rowMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (QPushButton* const button : m_buttons) {
        QAction* const action = menu->addAction(button->text());
        action->setEnabled(button->isEnabled());
        connect(action, &QAction::triggered, button, &QPushButton::click);
    }
    menu->addSeparator();
    menu->addAction(m_copy);
    menu->popup(m_table.viewport()->mapToGlobal(position));
}

void RowMenu::copyRow()
{
    if (m_table.selectedRow() < 0)
        return;
    const int row = m_table.selectionModel()->selectedRows().first().row();
    const QHeaderView& header = *m_table.horizontalHeader();
    QStringList texts;
    for (int position = 0; position < header.count(); ++position) {
        const QVariant text = m_table.model()->index(row, header.logicalIndex(position)).data();
        if (text.isValid()) // a picture has none
            texts.append(displayText(text.toString()));
    }
    QGuiApplication::clipboard()->setText(texts.join(u'\t'));
}
