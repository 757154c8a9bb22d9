#pragma once

#include "platform/ui/CellDelegate.h"

#include <QChar>

inline constexpr QChar spaceAfterNumber(0x2002); // an en space

// Shows right-aligned numbers, with some space between them and the text of the next column.
class NumberDelegate : public CellDelegate {
    Q_OBJECT

public:
    using CellDelegate::CellDelegate;

    [[nodiscard]] QString displayText(const QVariant& value, const QLocale& locale) const override;
};
