#pragma once

#include <QStyledItemDelegate>

// Draws a cell of a TableView. Where the keyboard is, the table shows by its row; a cell says it itself where the edit
// key would open that very cell.
class CellDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};
