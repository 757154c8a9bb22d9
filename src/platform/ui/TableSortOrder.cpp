#include "platform/ui/TableSortOrder.h"

#include "platform/ui/TableView.h"

#include <QHeaderView>
#include <QSettings>

namespace {

void save(const TableView& table, QSettings& settings, const QString& columnKey, const QString& descendingKey)
{
    const TableView::SortOrder sorted = table.sortedColumn();
    if (sorted.identifier.isEmpty()) {
        settings.remove(columnKey);
        settings.remove(descendingKey);
        return;
    }
    settings.setValue(columnKey, sorted.identifier);
    settings.setValue(descendingKey, sorted.order == Qt::DescendingOrder);
}

} // namespace

void keepSortOrder(TableView& table, QSettings& settings)
{
    const QString columnKey = QStringLiteral("%1/sortColumn").arg(table.objectName());
    const QString descendingKey = QStringLiteral("%1/sortDescending").arg(table.objectName());
    const bool descending = settings.value(descendingKey).toBool();
    table.sortByColumnWithIdentifier(
        { settings.value(columnKey).toString(), descending ? Qt::DescendingOrder : Qt::AscendingOrder });
    QObject::connect(table.horizontalHeader(), &QHeaderView::sortIndicatorChanged, &table,
        [&table, &settings, columnKey, descendingKey] { save(table, settings, columnKey, descendingKey); });
}
