#pragma once

#include <QStyledItemDelegate>

// Shows network names; a network that does not send its name gets a word in its place.
class NetworkNameDelegate final : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};
