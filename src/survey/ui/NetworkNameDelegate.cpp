#include "survey/ui/NetworkNameDelegate.h"

#include "survey/SurveyTexts.h"

void NetworkNameDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    const bool hidden = option->text.isEmpty();
    option->text = shownNetworkName(option->text);
    if (!hidden)
        return;
    option->features |= QStyleOptionViewItem::HasDisplay;
    option->font.setItalic(true);
    option->palette.setBrush(QPalette::Text, option->palette.brush(QPalette::PlaceholderText));
}
