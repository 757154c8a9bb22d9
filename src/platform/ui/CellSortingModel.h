#pragma once

#include <QCollator>
#include <QSortFilterProxyModel>

// Sorts by any column: numbers by value, texts by the user's locale. Rows that compare equal keep the source's order.
class CellSortingModel final : public QSortFilterProxyModel {
    Q_OBJECT

public:
    explicit CellSortingModel(QObject* parent = nullptr);

protected:
    [[nodiscard]] bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

private:
    QCollator m_collator;
};
