#pragma once

#include "profiles/ProfileEditorRules.h"

#include <QIntValidator>

// Accepts the digits of a threshold. When the field loses focus, a number out of range is clamped, and an empty field
// becomes the maximum, which means "off".
class ThresholdValidator final : public QIntValidator {
    Q_OBJECT

public:
    explicit ThresholdValidator(ThresholdRange range, QObject* parent = nullptr);

    void fixup(QString& text) const override;

private:
    ThresholdRange m_range;
};
