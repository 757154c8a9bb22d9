#include "platform/ui/CellDelegate.h"

void CellDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    // In a row that is not selected, the filled frame would look like a selection.
    if (!index.flags().testFlag(Qt::ItemIsEditable) || !option->state.testFlag(QStyle::State_Selected))
        option->state &= ~QStyle::State_HasFocus;
}
