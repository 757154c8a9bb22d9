#include "platform/ui/NumberDelegate.h"

QString NumberDelegate::displayText(const QVariant& value, const QLocale& locale) const
{
    constexpr char16_t enSpace = 0x2002;
    return QStyledItemDelegate::displayText(value, locale) + QChar(enSpace);
}
