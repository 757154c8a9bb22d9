#pragma once

#include "platform/ui/CellDelegate.h"

#include <QChar>

inline constexpr QChar spaceAfterFigures(0x2002); // an en space

// Shows figures, which stand at the right of their column, a little apart from what the next column begins with.
class NumberDelegate : public CellDelegate {
    Q_OBJECT

public:
    using CellDelegate::CellDelegate;

    [[nodiscard]] QString displayText(const QVariant& value, const QLocale& locale) const override;
};
