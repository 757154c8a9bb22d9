#pragma once

#include "platform/ui/CellDelegate.h"

// Centres pictures in their column; styles draw them where text would start.
class PictureDelegate final : public CellDelegate {
    Q_OBJECT

public:
    using CellDelegate::CellDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};
