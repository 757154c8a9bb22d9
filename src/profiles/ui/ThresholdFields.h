#pragma once

#include "profiles/ProfileEditorRules.h"

class QCheckBox;
class QLineEdit;
class QSlider;

// One threshold of the editor: the box that allows it to be changed, a slider, and the field whose text is what counts.
class ThresholdFields final {
public:
    // Starts at the largest value, which means "off". From then on the slider follows the field.
    ThresholdFields(QCheckBox& check, QSlider& slider, QLineEdit& text, ThresholdRange range);

    void followCheckBox();
    void followSlider();
    // As when the field is left.
    void correctText();

private:
    QCheckBox& m_check;
    QSlider& m_slider;
    QLineEdit& m_text;
};
