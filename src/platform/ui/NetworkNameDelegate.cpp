#include "platform/ui/NetworkNameDelegate.h"

#include "platform/ByteText.h"
#include "platform/ui/FaintText.h"

NetworkNameDelegate::NetworkNameDelegate(const QString& placeholder, QObject* parent)
    : CellDelegate(parent)
    , m_placeholder(placeholder)
{
}

QString NetworkNameDelegate::textOf(const QVariant& value) const
{
    const QString name = value.toString();
    return name.isEmpty() ? m_placeholder : ::displayText(name);
}

QString NetworkNameDelegate::displayText(const QVariant& value, const QLocale& /*locale*/) const
{
    return textOf(value);
}

void NetworkNameDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    CellDelegate::initStyleOption(option, index);
    if (!index.data().toString().isEmpty())
        return;
    option->font.setItalic(true);
    option->palette.setBrush(QPalette::Text, faintTextColour(option->palette));
}
