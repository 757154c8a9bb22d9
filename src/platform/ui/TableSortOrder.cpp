#include "platform/ui/TableSortOrder.h"

#include "platform/store/WindowSettings.h"
#include "platform/ui/TableView.h"

#include <QHeaderView>

namespace {

void save(const TableView& table, WindowSettings& settings, const QString& columnKey, const QString& descendingKey)
{
    const TableView::SortOrder sorted = table.sortedColumn();
    settings.setText(columnKey, sorted.identifier);
    settings.setText(descendingKey, sorted.order == Qt::DescendingOrder ? QStringLiteral("1") : QString());
    (void)settings.save();
}

} // namespace

void keepSortOrder(TableView& table, WindowSettings& settings)
{
    const QString columnKey = QStringLiteral("%1/sortColumn").arg(table.objectName());
    const QString descendingKey = QStringLiteral("%1/sortDescending").arg(table.objectName());
    const bool descending = !settings.text(descendingKey).isEmpty();
    table.sortByColumnWithIdentifier(
        { settings.text(columnKey), descending ? Qt::DescendingOrder : Qt::AscendingOrder });
    QObject::connect(table.horizontalHeader(), &QHeaderView::sortIndicatorChanged, &table,
        [&table, &settings, columnKey, descendingKey] { save(table, settings, columnKey, descendingKey); });
}
