#include "profiles/ui/ThresholdValidator.h"

#include <QLocale>

ThresholdValidator::ThresholdValidator(ThresholdRange range, QObject* parent)
    : QIntValidator(range.min, range.max, parent)
    , m_range(range)
{
    setLocale(QLocale::c()); // ASCII digits, as stored
}

void ThresholdValidator::fixup(QString& text) const
{
    text = QString::number(text.isEmpty() ? m_range.max : sliderValueOf(text, m_range));
}
