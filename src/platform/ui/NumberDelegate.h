#pragma once

#include <QStyledItemDelegate>

inline constexpr QChar spaceAfterFigures(0x2002); // an en space

// Shows figures, which stand at the right of their column, a little apart from what the next column begins with.
class NumberDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    [[nodiscard]] QString displayText(const QVariant& value, const QLocale& locale) const override;
};
