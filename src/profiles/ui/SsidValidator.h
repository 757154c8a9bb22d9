#pragma once

#include <QValidator>

// Limits a network name to 32 bytes (IEEE 802.11). Input at the end is truncated between two characters. Input before
// other text is rejected if it does not fit, so that the text after it is not lost.
class SsidValidator final : public QValidator {
    Q_OBJECT

public:
    using QValidator::QValidator;

    State validate(QString& text, int& position) const override;
};
