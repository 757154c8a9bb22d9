#include "platform/ui/CellModel.h"

#include "platform/ui/TableDataSource.h"

#include <QPixmap>

#include <algorithm>
#include <limits>
#include <utility>

void CellModel::setColumns(std::vector<TableColumn> columns)
{
    beginResetModel();
    m_columns = std::move(columns);
    m_rows.clear();
    endResetModel();
}

void CellModel::setDataSource(TableDataSource* source)
{
    m_source = source;
}

int CellModel::columnOf(QStringView identifier) const
{
    for (std::size_t column = 0; column < m_columns.size(); ++column) {
        if (m_columns[column].identifier == identifier)
            return static_cast<int>(column);
    }
    return -1;
}

int CellModel::firstTextColumn() const
{
    const auto isText = [](const TableColumn& column) { return column.kind == TableColumn::Kind::Text; };
    const auto first = std::find_if(m_columns.begin(), m_columns.end(), isText);
    return first == m_columns.end() ? 0 : static_cast<int>(first - m_columns.begin());
}

int CellModel::availableRows() const
{
    return m_source != nullptr ? m_source->numberOfRowsInTableView() : 0;
}

qsizetype CellModel::textLength(int row, int column) const
{
    return m_rows[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)].text.size();
}

CellModel::Row CellModel::pullRow(int row) const
{
    Row cells;
    cells.reserve(m_columns.size());
    for (const TableColumn& column : m_columns) {
        const QVariant value = m_source->objectValueForTableColumn(column.identifier, row);
        Cell& cell = cells.emplace_back();
        if (column.kind != TableColumn::Kind::Image) {
            cell.text = value.toString();
        } else if (value.metaType() == QMetaType::fromType<QIcon>()) {
            cell.image = value.value<QIcon>();
            cell.imageKey = cell.image.cacheKey();
        } else if (value.metaType() == QMetaType::fromType<QPixmap>()) {
            const auto pixmap = value.value<QPixmap>();
            cell.image = QIcon(pixmap);
            cell.imageKey = pixmap.cacheKey();
        }
        if (!cell.image.isNull())
            cell.imageText = m_source->imageTextForTableColumn(column.identifier, row);
    }
    return cells;
}

bool CellModel::removeRowsFrom(int count)
{
    if (rowCount() <= count)
        return false;
    beginRemoveRows({}, count, rowCount() - 1);
    m_rows.resize(static_cast<std::size_t>(count));
    endRemoveRows();
    return true;
}

CellModel::ChangedCells CellModel::updateRow(int row)
{
    Row pulled = pullRow(row);
    Row& kept = m_rows[static_cast<std::size_t>(row)];
    ChangedCells changed(kept.size());
    for (std::size_t column = 0; column < kept.size(); ++column)
        changed[column] = pulled[column] != kept[column];
    kept = std::move(pulled);
    return changed;
}

// An announcement reaches the editor of every cell that it names, and puts the cell's value in place of what is being
// typed: cells that did not change are left out.
void CellModel::announce(int firstRow, int lastRow, const ChangedCells& changed)
{
    auto first = std::find(changed.begin(), changed.end(), true);
    while (first != changed.end()) {
        const auto end = std::find(first, changed.end(), false);
        const auto column = [&changed](auto cell) { return static_cast<int>(cell - changed.begin()); };
        Q_EMIT dataChanged(index(firstRow, column(first)), index(lastRow, column(end) - 1));
        first = std::find(end, changed.end(), true);
    }
}

bool CellModel::updateRows()
{
    const int count = rowCount();
    const ChangedCells none(m_columns.size());
    ChangedCells run = none; // what changed in each row of the present run
    int firstOfRun = 0;
    bool anyChanged = false;
    // One run for the rows that follow each other and changed alike; the step behind the last row closes the last run.
    for (int row = 0; row <= count; ++row) {
        ChangedCells changed = row < count ? updateRow(row) : none;
        anyChanged = anyChanged || changed != none;
        if (changed == run)
            continue;
        announce(firstOfRun, row - 1, run);
        run = std::move(changed);
        firstOfRun = row;
    }
    return anyChanged;
}

bool CellModel::appendRowsUpTo(int count)
{
    if (rowCount() >= count)
        return false;
    std::vector<Row> appended;
    appended.reserve(static_cast<std::size_t>(count - rowCount()));
    for (int row = rowCount(); row < count; ++row)
        appended.push_back(pullRow(row));
    beginInsertRows({}, rowCount(), count - 1);
    m_rows.insert(m_rows.end(), std::make_move_iterator(appended.begin()), std::make_move_iterator(appended.end()));
    endInsertRows();
    return true;
}

bool CellModel::reload()
{
    const int count = availableRows();
    const bool removed = removeRowsFrom(count);
    const bool updated = updateRows();
    const bool appended = appendRowsUpTo(count);
    return removed || updated || appended;
}

int CellModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int CellModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
}

QVariant CellModel::sortValue(const Cell& cell, TableColumn::Kind kind)
{
    switch (kind) {
    case TableColumn::Kind::Text:
        break;
    case TableColumn::Kind::Image:
        return cell.image.isNull() ? 1.0 : 0.0; // rows with an image first
    case TableColumn::Kind::Number: {
        bool isNumber = false;
        const double number = cell.text.toDouble(&isNumber);
        return isNumber ? number : -std::numeric_limits<double>::infinity();
    }
    }
    return cell.text;
}

QVariant CellModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const TableColumn& column = m_columns[static_cast<std::size_t>(index.column())];
    const Cell& cell = m_rows[static_cast<std::size_t>(index.row())][static_cast<std::size_t>(index.column())];
    const bool hasImage = !cell.image.isNull();
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return column.kind == TableColumn::Kind::Image ? QVariant() : cell.text;
    case Qt::DecorationRole:
        return hasImage ? QVariant(cell.image) : QVariant();
    case Qt::ToolTipRole:
        return m_source != nullptr ? m_source->toolTipForTableColumn(column.identifier, index.row()) : QString();
    case Qt::AccessibleTextRole:
        return hasImage ? QVariant(cell.imageText) : QVariant();
    case Qt::TextAlignmentRole:
        return column.kind == TableColumn::Kind::Number ? QVariant(Qt::AlignRight | Qt::AlignVCenter) : QVariant();
    case sortRole:
        return sortValue(cell, column.kind);
    default:
        return {};
    }
}

bool CellModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::EditRole || m_source == nullptr || !checkIndex(index, CheckIndexOption::IndexIsValid))
        return false;
    if (index.row() >= availableRows()) // it went away while it was edited, and the end of the editing tells of it
        return false;
    m_source->setObjectValue(value, m_columns[static_cast<std::size_t>(index.column())].identifier, index.row());
    reload();
    return true;
}

Qt::ItemFlags CellModel::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index) | Qt::ItemNeverHasChildren;
    if (index.isValid() && m_columns[static_cast<std::size_t>(index.column())].editable)
        return flags | Qt::ItemIsEditable;
    return flags;
}

QVariant CellModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount())
        return {};
    const TableColumn& column = m_columns[static_cast<std::size_t>(section)];
    switch (role) {
    case Qt::DisplayRole:
        return column.title;
    case Qt::ToolTipRole:
        return column.description;
    case Qt::AccessibleTextRole:
        return column.title.isEmpty() ? column.description : column.title;
    case Qt::TextAlignmentRole:
        return QVariant((column.kind == TableColumn::Kind::Number ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    default:
        return {};
    }
}

CellSorting::CellSorting(QObject* parent)
    : QSortFilterProxyModel(parent)
{
    m_collator.setCaseSensitivity(Qt::CaseInsensitive);
    m_collator.setNumericMode(true);
    setSortRole(CellModel::sortRole);
}

bool CellSorting::lessThan(const QModelIndex& left, const QModelIndex& right) const
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
    // Sorting downwards turns the two sides round, and must not turn equal rows round with them.
    return sortOrder() == Qt::AscendingOrder ? left.row() < right.row() : left.row() > right.row();
}
