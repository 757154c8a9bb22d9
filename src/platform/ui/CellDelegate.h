#pragma once

#include <QStyledItemDelegate>

// Draws a cell of a TableView. The table marks the row with the keyboard focus, so a cell draws a focus frame only if
// it is editable: the edit key opens that cell.
class CellDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    // The displayed text of a cell without the space that aligns it.
    [[nodiscard]] virtual QString textOf(const QVariant& value) const { return value.toString(); }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};
