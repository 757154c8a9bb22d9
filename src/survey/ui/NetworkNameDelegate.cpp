#include "survey/ui/NetworkNameDelegate.h"

void NetworkNameDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    if (!option->text.isEmpty())
        return;
    option->text = tr("(hidden)");
    option->features |= QStyleOptionViewItem::HasDisplay;
    option->font.setItalic(true);
    option->palette.setBrush(QPalette::Text, option->palette.brush(QPalette::PlaceholderText));
}
