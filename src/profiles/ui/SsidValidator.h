#pragma once

#include <QValidator>

// Lets a network name grow to 32 bytes (IEEE 802.11) and no further. What is added at the end is cut between two
// characters; what is put in before other text and does not fit is refused, so that nothing is pushed out.
class SsidValidator final : public QValidator {
    Q_OBJECT

public:
    using QValidator::QValidator;

    State validate(QString& text, int& position) const override;
};
