#pragma once

#include "profiles/ProfileEditorRules.h"

#include <QIntValidator>

// Digits of a threshold. When the field is left, a number out of range becomes the nearest that is in range, and an
// empty field the largest, which means "off".
class ThresholdValidator final : public QIntValidator {
    Q_OBJECT

public:
    explicit ThresholdValidator(ThresholdRange range, QObject* parent = nullptr);

    void fixup(QString& text) const override;

private:
    ThresholdRange m_range;
};
