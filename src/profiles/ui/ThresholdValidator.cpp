#include "profiles/ui/ThresholdValidator.h"

#include <QLocale>

ThresholdValidator::ThresholdValidator(ThresholdRange range, QObject* parent)
    : QIntValidator(range.least, range.most, parent)
    , m_range(range)
{
    setLocale(QLocale::c()); // plain digits, as they are stored
}

void ThresholdValidator::fixup(QString& text) const
{
    text = QString::number(text.isEmpty() ? m_range.most : sliderValueOf(text, m_range));
}
