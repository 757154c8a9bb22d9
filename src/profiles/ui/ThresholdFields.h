#pragma once

#include "profiles/ProfileEditorRules.h"

class QCheckBox;
class QLineEdit;
class QSlider;

// One threshold of the editor: the check box that enables it, a slider, and the field whose text is saved.
class ThresholdFields final {
public:
    // Starts with the maximum, which means "off". The slider follows the field.
    ThresholdFields(QCheckBox& check, QSlider& slider, QLineEdit& text, ThresholdRange range);

    void followCheckBox();
    void followSlider();
    // Corrects the text as if the field lost focus.
    void correctText();

private:
    QCheckBox& m_check;
    QSlider& m_slider;
    QLineEdit& m_text;
};
