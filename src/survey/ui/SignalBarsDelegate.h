#pragma once

#include "platform/ui/NumberDelegate.h"

// Draws a signal quality of 0 to 100 as bars, followed by the number.
class SignalBarsDelegate final : public NumberDelegate {
    Q_OBJECT

public:
    using NumberDelegate::NumberDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

inline constexpr int signalBars = 5;

// The number of filled bars, rounded up, so that only a quality of 0 fills none.
[[nodiscard]] int filledSignalBars(int quality);
