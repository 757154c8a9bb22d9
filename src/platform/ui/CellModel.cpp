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

QString CellModel::identifierOf(int column) const
{
    const bool exists = column >= 0 && column < columnCount();
    return exists ? m_columns[static_cast<std::size_t>(column)].identifier : QString();
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

CellModel::Row CellModel::fetchRow(int row) const
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

// Signals only changed cells: the signal makes the editor of a cell discard what the user is typing.
bool CellModel::updateRow(int row)
{
    const Row before = std::exchange(m_rows[static_cast<std::size_t>(row)], fetchRow(row));
    const Row& cells = m_rows[static_cast<std::size_t>(row)];
    const int count = columnCount();
    bool anyChanged = false;
    for (int first = 0; first < count; ++first) {
        int end = first;
        while (end < count && cells[static_cast<std::size_t>(end)] != before[static_cast<std::size_t>(end)])
            ++end;
        if (end == first)
            continue;
        Q_EMIT dataChanged(index(row, first), index(row, end - 1));
        anyChanged = true;
        first = end;
    }
    return anyChanged;
}

bool CellModel::updateRows()
{
    bool anyChanged = false;
    for (int row = 0; row < rowCount(); ++row)
        anyChanged = updateRow(row) || anyChanged;
    return anyChanged;
}

bool CellModel::appendRowsUpTo(int count)
{
    if (rowCount() >= count)
        return false;
    std::vector<Row> appended;
    appended.reserve(static_cast<std::size_t>(count - rowCount()));
    for (int row = rowCount(); row < count; ++row)
        appended.push_back(fetchRow(row));
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
    // Qt's accessibility keeps cells, and asks for the data of those that are gone with an invalid index.
    if (!index.isValid() || !checkIndex(index))
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
    if (role != Qt::EditRole || m_source == nullptr || !index.isValid() || !checkIndex(index))
        return false;
    if (index.row() >= availableRows()) // removed while it was edited; the editor still commits
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
    case Qt::InitialSortOrderRole:
        return QVariant(column.descendingFirst ? Qt::DescendingOrder : Qt::AscendingOrder);
    case Qt::TextAlignmentRole:
        return QVariant((column.kind == TableColumn::Kind::Number ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    default:
        return {};
    }
}
