#include "profiles/ui/ThresholdFields.h"

#include "profiles/ui/ThresholdValidator.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QSlider>

namespace {

constexpr int maxDigits = 4;

} // namespace

ThresholdFields::ThresholdFields(QCheckBox& check, QSlider& slider, QLineEdit& text, ThresholdRange range)
    : m_check(check)
    , m_slider(slider)
    , m_text(text)
{
    m_slider.setRange(range.min, range.max);
    m_slider.setValue(range.max);
    m_text.setText(QString::number(range.max));
    m_text.setValidator(new ThresholdValidator(range, &m_text));
    m_text.setMaximumWidth(m_text.fontMetrics().horizontalAdvance(QString(maxDigits + 4, u'0')));
    QObject::connect(&m_text, &QLineEdit::textChanged, &m_slider, [&slider, range](const QString& typed) {
        const QSignalBlocker blocker(slider); // the slider would overwrite the text while the user types
        slider.setValue(sliderValueOf(typed, range));
    });
    followCheckBox();
}

void ThresholdFields::followCheckBox()
{
    m_slider.setEnabled(m_check.isChecked());
    m_text.setEnabled(m_check.isChecked());
}

void ThresholdFields::followSlider()
{
    m_text.setText(QString::number(m_slider.value()));
}

void ThresholdFields::correctText()
{
    if (m_text.hasAcceptableInput())
        return;
    QString text = m_text.text();
    m_text.validator()->fixup(text);
    m_text.setText(text);
}
