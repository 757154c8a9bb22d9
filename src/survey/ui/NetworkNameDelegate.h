#pragma once

#include <QStyledItemDelegate>

// Shows network names as shownNetworkName has them; a name that is not sent stands out from one that reads the same.
class NetworkNameDelegate final : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};
