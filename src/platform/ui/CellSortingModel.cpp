#include "platform/ui/CellSortingModel.h"

#include "platform/ui/CellModel.h"

CellSortingModel::CellSortingModel(QObject* parent)
    : QSortFilterProxyModel(parent)
{
    m_collator.setCaseSensitivity(Qt::CaseInsensitive);
    m_collator.setNumericMode(true);
    setSortRole(CellModel::sortRole);
}

bool CellSortingModel::lessThan(const QModelIndex& left, const QModelIndex& right) const
{
    const QVariant leftValue = left.data(CellModel::sortRole);
    const QVariant rightValue = right.data(CellModel::sortRole);
    int order = 0;
    if (leftValue.metaType() == QMetaType::fromType<QString>())
        order = m_collator.compare(leftValue.toString(), rightValue.toString());
    else if (leftValue.toDouble() != rightValue.toDouble())
        order = leftValue.toDouble() < rightValue.toDouble() ? -1 : 1;
    if (order != 0)
        return order < 0;
    // Descending order swaps the operands, which must not reverse the order of equal rows.
    return sortOrder() == Qt::AscendingOrder ? left.row() < right.row() : left.row() > right.row();
}
