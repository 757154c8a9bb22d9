#include "platform/ui/NetworkNameDelegate.h"

#include "platform/ByteText.h"
#include "platform/ui/FaintText.h"

NetworkNameDelegate::NetworkNameDelegate(const QString& placeholder, QObject* parent)
    : CellDelegate(parent)
    , m_placeholder(placeholder)
{
}

void NetworkNameDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    CellDelegate::initStyleOption(option, index);
    if (!option->text.isEmpty()) {
        option->text = ::displayText(option->text);
        return;
    }
    option->text = m_placeholder;
    option->features |= QStyleOptionViewItem::HasDisplay;
    option->font.setItalic(true);
    option->palette.setBrush(QPalette::Text, faintTextColour(option->palette));
}
