#include "platform/ui/TableView.h"

#include "platform/ui/TableHeader.h"

#include <QKeyEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>

#include <algorithm>
#include <utility>

namespace {

// Measuring every text of a long list costs more than showing it. The widest is among the longest: this many of
// them are measured, none shorter than three quarters of the longest.
constexpr int measuredCells = 12;

bool movesThroughTheTable(int key)
{
    switch (key) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Home:
    case Qt::Key_End:
        return true;
    default:
        return false;
    }
}

} // namespace

TableView::TableView(QWidget* parent)
    : QTableView(parent)
{
    m_sorting.setSourceModel(&m_cells);
    setModel(&m_sorting);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(EditKeyPressed);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setTabKeyNavigation(false); // the Tab key leaves the table
    setHorizontalScrollMode(ScrollPerPixel);
    setItemDelegate(&m_cellDelegate);
    setUpHeaders();
    fitRowHeight();

    connect(this, &QTableView::doubleClicked, this, [this] {
        if (m_doubleAction)
            m_doubleAction();
    });
}

void TableView::setUpHeaders()
{
    auto* const header = new TableHeader(this);
    setHorizontalHeader(header);
    header->setSortIndicatorClearable(true);
    header->setSortIndicator(-1, Qt::AscendingOrder);
    header->setHighlightSections(false);
    header->setStretchLastSection(true);
    setSortingEnabled(true);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);

    connect(header, &QHeaderView::sectionResized, this, [this](int column) {
        // The last column is resized with the window, not by the user.
        if (!m_fitting && column + 1 < m_cells.columnCount())
            m_sizedByUser[static_cast<std::size_t>(column)] = true;
    });
    connect(header, &QHeaderView::sectionHandleDoubleClicked, this, [this](int column) {
        m_sizedByUser[static_cast<std::size_t>(column)] = false;
        fitColumnWidths();
    });
}

void TableView::setTableColumns(std::vector<TableColumn> columns)
{
    m_sizedByUser.assign(columns.size(), false);
    for (std::size_t column = 0; column < columns.size(); ++column)
        setItemDelegateForColumn(static_cast<int>(column), delegateFor(columns[column].kind));
    m_cells.setColumns(std::move(columns));
    fitColumnWidths();
    updateEmptyText();
}

QAbstractItemDelegate* TableView::delegateFor(TableColumn::Kind kind)
{
    switch (kind) {
    case TableColumn::Kind::Text:
        break;
    case TableColumn::Kind::Number:
        return &m_numberDelegate;
    case TableColumn::Kind::Image:
        return &m_pictureDelegate;
    }
    return &m_cellDelegate;
}

void TableView::setDelegateForTableColumn(QStringView identifier, QAbstractItemDelegate* delegate)
{
    if (const int column = m_cells.columnOf(identifier); column >= 0)
        setItemDelegateForColumn(column, delegate);
}

void TableView::setDataSource(TableDataSource* source)
{
    m_cells.setDataSource(source);
}

void TableView::reloadData()
{
    // The view would select a neighbour of the row that goes away.
    if (selectedRow() >= m_cells.availableRows())
        deselectAll();
    if (!m_cells.reload())
        return;
    fitColumnWidths();
    updateEmptyText();
}

int TableView::numberOfRows() const
{
    return m_cells.rowCount();
}

int TableView::selectedRow() const
{
    const QModelIndexList rows = selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : m_sorting.mapToSource(rows.first()).row();
}

void TableView::selectRowNumber(int row)
{
    const QModelIndex index = m_sorting.mapFromSource(m_cells.index(row, 0));
    if (!index.isValid()) {
        deselectAll();
        return;
    }
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

void TableView::deselectAll()
{
    selectionModel()->clear();
}

void TableView::setDoubleAction(std::function<void()> action)
{
    m_doubleAction = std::move(action);
}

void TableView::setEmptyText(const QString& text)
{
    setEmptyTextSource([text] { return text; });
}

void TableView::setEmptyTextSource(std::function<QString()> source)
{
    m_emptyTextSource = std::move(source);
    updateEmptyText();
}

void TableView::updateEmptyText()
{
    const QString text = textInsteadOfRows();
    if (text != accessibleDescription())
        setAccessibleDescription(text);
    if (text != m_paintedEmptyText)
        viewport()->update();
}

QString TableView::emptyText() const
{
    return m_emptyTextSource ? m_emptyTextSource() : QString();
}

QString TableView::textInsteadOfRows() const
{
    return m_cells.rowCount() == 0 ? emptyText() : QString();
}

void TableView::keyPressEvent(QKeyEvent* event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && m_doubleAction && state() != EditingState && selectedRow() >= 0) {
        m_doubleAction();
        return;
    }
    if (event->key() == Qt::Key_Space && !currentIndex().isValid() && keyboardPlace().isValid()) {
        setCurrentIndex(keyboardPlace());
        return;
    }
    if (state() == EditingState || !movesThroughTheTable(event->key())) {
        QTableView::keyPressEvent(event);
        return;
    }
    // When the keyboard comes to the table, its first cell becomes current without being selected; a first step down
    // must not pass over that row, and a way to where the cell already is selects it too.
    const bool step = event->key() == Qt::Key_Up || event->key() == Qt::Key_Down;
    if (!step || selectedRow() >= 0 || !currentIndex().isValid())
        QTableView::keyPressEvent(event);
    if (selectedRow() < 0 && currentIndex().isValid())
        setCurrentIndex(currentIndex()); // selects its row
}

// Home and End go to the first and the last row, as in a list, and stay in their column; with Ctrl to the first and the
// last cell.
QModelIndex TableView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    const int rows = model()->rowCount();
    if (rows == 0 || (action != MoveHome && action != MoveEnd))
        return QTableView::moveCursor(action, modifiers);
    const QHeaderView& header = *horizontalHeader();
    const int row = action == MoveHome ? 0 : rows - 1;
    if ((modifiers & Qt::ControlModifier) != 0)
        return model()->index(row, header.logicalIndex(action == MoveHome ? 0 : header.count() - 1));
    return model()->index(row, std::max(currentIndex().column(), 0));
}

void TableView::keyboardSearch(const QString& search)
{
    const QModelIndex before = currentIndex();
    const int lastRow = model()->rowCount() - 1;
    if (lastRow < 0)
        return;
    // The search goes on behind the current row, and round to the first one, in the current column.
    const int row = selectedRow() >= 0 && before.isValid() ? before.row() : lastRow;
    setAutoScroll(false); // nothing was found yet
    selectionModel()->setCurrentIndex(model()->index(row, m_cells.firstTextColumn()), QItemSelectionModel::NoUpdate);
    setAutoScroll(true);
    QTableView::keyboardSearch(search);
    if (selectedRow() < 0)
        selectionModel()->setCurrentIndex(before, QItemSelectionModel::NoUpdate);
}

QRect TableView::rowRect(const QModelIndex& index) const
{
    if (!index.isValid())
        return {};
    const QHeaderView& header = *horizontalHeader();
    return visualRect(index.siblingAtColumn(header.logicalIndex(0)))
        | visualRect(index.siblingAtColumn(header.logicalIndex(header.count() - 1)));
}

// The cell that the keys start from: without a current one, as after a deselection, the first.
QModelIndex TableView::keyboardPlace() const
{
    const QModelIndex current = currentIndex();
    return current.isValid() ? current : model()->index(0, horizontalHeader()->logicalIndex(0));
}

void TableView::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QTableView::currentChanged(current, previous); // which paints the two cells anew
    viewport()->update(rowRect(previous));
    viewport()->update(rowRect(keyboardPlace()));
}

void TableView::paintEvent(QPaintEvent* event)
{
    QTableView::paintEvent(event);
    paintFocusOfRow();
    paintEmptyText(*event);
}

// Where no cell of its own says it (CellDelegate). A row that is not selected always shows that the keyboard is in it,
// a selected one, which is seen by its colour, where the style marks what the keyboard went to.
void TableView::paintFocusOfRow()
{
    const QModelIndex place = keyboardPlace();
    if (!hasFocus() || !place.isValid() || place.flags().testFlag(Qt::ItemIsEditable))
        return;
    QStyleOptionFocusRect option;
    option.initFrom(this);
    option.rect = rowRect(place);
    const bool selected = selectionModel()->isSelected(place);
    option.state |= selected ? QStyle::State_Selected : QStyle::State_KeyboardFocusChange;
    option.backgroundColor = palette().color(selected ? QPalette::Highlight : QPalette::Base);
    QPainter painter(viewport());
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
}

void TableView::paintEmptyText(const QPaintEvent& event)
{
    const QString text = textInsteadOfRows();
    if (text != m_paintedEmptyText && !event.rect().contains(viewport()->rect()))
        viewport()->update(); // the part that is not painted now shows the text before
    m_paintedEmptyText = text;
    if (text.isEmpty())
        return;
    const int margin = fontMetrics().height();
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(
        viewport()->rect().adjusted(margin, margin, -margin, -margin), Qt::AlignCenter | Qt::TextWordWrap, text);
}

void TableView::changeEvent(QEvent* event)
{
    QTableView::changeEvent(event);
    if (event->type() != QEvent::FontChange && event->type() != QEvent::StyleChange)
        return;
    fitRowHeight();
    fitColumnWidths();
}

void TableView::fitRowHeight()
{
    const int iconHeight = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    verticalHeader()->setDefaultSectionSize(std::max(fontMetrics().height(), iconHeight) * 3 / 2);
}

int TableView::contentsWidth(int column) const
{
    qsizetype longest = 0;
    for (int row = 0; row < m_cells.rowCount(); ++row)
        longest = std::max(longest, m_cells.textLength(row, column));
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    int width = 0;
    int measured = 0;
    for (int row = 0; row < m_cells.rowCount() && measured < measuredCells; ++row) {
        if (m_cells.textLength(row, column) * 4 < longest * 3)
            continue;
        const QModelIndex index = m_sorting.mapFromSource(m_cells.index(row, column));
        width = std::max(width, itemDelegateForIndex(index)->sizeHint(option, index).width());
        ++measured;
    }
    return width;
}

void TableView::fitColumnWidths()
{
    // An empty table keeps its widths: it is often only about to be filled again.
    if (m_cells.rowCount() == 0 && m_fittedToRows)
        return;
    m_fittedToRows = m_cells.rowCount() > 0;
    const int padding = fontMetrics().averageCharWidth() * 2;
    m_fitting = true;
    for (int column = 0; column < m_cells.columnCount(); ++column) {
        if (m_sizedByUser[static_cast<std::size_t>(column)])
            continue;
        const int heading = horizontalHeader()->sectionSizeHint(column);
        setColumnWidth(column, std::max(heading, contentsWidth(column) + padding));
    }
    m_fitting = false;
}
