#pragma once

#include "platform/ui/NumberDelegate.h"

// Draws a signal quality of 0 to 100 as bars with the figure beside them.
class SignalBarsDelegate final : public NumberDelegate {
    Q_OBJECT

public:
    using NumberDelegate::NumberDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

inline constexpr int signalBars = 5;

// How many of the bars a quality fills: every bar begun counts, so that only 0 shows none.
[[nodiscard]] int filledSignalBars(int quality);
