#pragma once

#include "platform/ui/CellDelegate.h"

// Shows pictures in the middle of their column: a style puts them where a text would begin.
class PictureDelegate final : public CellDelegate {
    Q_OBJECT

public:
    using CellDelegate::CellDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};
