#include "platform/ui/CellDelegate.h"

void CellDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    if (!index.flags().testFlag(Qt::ItemIsEditable))
        option->state &= ~QStyle::State_HasFocus;
}
