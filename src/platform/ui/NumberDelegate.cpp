#include "platform/ui/NumberDelegate.h"

QString NumberDelegate::displayText(const QVariant& value, const QLocale& locale) const
{
    return CellDelegate::displayText(value, locale) + spaceAfterNumber;
}
