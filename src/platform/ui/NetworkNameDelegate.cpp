#include "platform/ui/NetworkNameDelegate.h"

#include "platform/NetworkName.h"

NetworkNameDelegate::NetworkNameDelegate(const QString& wordForNone, QObject* parent)
    : CellDelegate(parent)
    , m_wordForNone(wordForNone)
{
}

void NetworkNameDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    CellDelegate::initStyleOption(option, index);
    if (!option->text.isEmpty()) {
        option->text = shownText(option->text);
        return;
    }
    option->text = m_wordForNone;
    option->features |= QStyleOptionViewItem::HasDisplay;
    option->font.setItalic(true);
    option->palette.setBrush(QPalette::Text, option->palette.brush(QPalette::PlaceholderText));
}
