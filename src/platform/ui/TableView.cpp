#include "platform/ui/TableView.h"

#include "platform/ui/FaintText.h"
#include "platform/ui/TableHeader.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyleOptionFocusRect>

#include <algorithm>
#include <utility>

namespace {

// Measuring every text of a long list costs more than showing it, and the widest text is usually one of the longest. So
// only this many texts are measured, each at least three quarters as long as the longest.
constexpr int maxMeasuredCells = 12;

bool isCursorKey(int key)
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

// A thin line in the colour of the selection is hard to see on a dark background.
QColor focusColour(const QPalette& palette)
{
    const QColor colour = palette.color(QPalette::Highlight);
    const bool dark = palette.color(QPalette::Base).lightness() < palette.color(QPalette::Text).lightness();
    return dark ? colour.lighter() : colour;
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
    setTabKeyNavigation(false); // the Tab key moves the focus out of the table
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
        // The last column is stretched with the window, not resized by the user.
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
    // Otherwise the view would select a neighbour of the removed row.
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

void TableView::scrollToRowNumber(int row)
{
    const QModelIndex index = m_sorting.mapFromSource(m_cells.index(row, 0));
    if (!index.isValid())
        return;
    executeDelayedItemsLayout(); // new rows extend the scroll range
    const int left = horizontalScrollBar()->value();
    scrollTo(index);
    horizontalScrollBar()->setValue(left);
}

TableView::SortOrder TableView::sortedColumn() const
{
    const QHeaderView& header = *horizontalHeader();
    return { m_cells.identifierOf(header.sortIndicatorSection()), header.sortIndicatorOrder() };
}

void TableView::sortByColumnWithIdentifier(const SortOrder& sorted)
{
    const int column = m_cells.columnOf(sorted.identifier);
    sortByColumn(column, column >= 0 ? sorted.order : Qt::AscendingOrder);
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
    const QString text = displayedEmptyText();
    if (text != accessibleDescription())
        setAccessibleDescription(text);
    if (text != m_paintedEmptyText)
        viewport()->update();
}

QString TableView::emptyText() const
{
    return m_emptyTextSource ? m_emptyTextSource() : QString();
}

QString TableView::displayedEmptyText() const
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
    if (event->key() == Qt::Key_Space && !currentIndex().isValid() && keyboardIndex().isValid()) {
        setCurrentIndex(keyboardIndex());
        return;
    }
    if (state() == EditingState || !isCursorKey(event->key())) {
        QTableView::keyPressEvent(event);
        return;
    }
    // When the table gets the focus, its first cell becomes current without being selected, and no row shows it. The
    // first Up or Down must select that row instead of skipping it, and so must a key that does not change the current
    // cell.
    const bool step = event->key() == Qt::Key_Up || event->key() == Qt::Key_Down;
    if (!step || selectedRow() >= 0 || !currentIndex().isValid())
        QTableView::keyPressEvent(event);
    if (selectedRow() < 0 && currentIndex().isValid())
        setCurrentIndex(currentIndex()); // selects the row
}

// Home and End move to the first and last row of the same column, as in a list; with Ctrl, to the first and last cell.
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
    // The base class searches the current column, from the row after the current one, and wraps around.
    const int row = selectedRow() >= 0 && before.isValid() ? before.row() : lastRow;
    setAutoScroll(false); // only for the temporary index
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

// The cell that Space selects: the current one, or the first if there is none (after a deselection).
QModelIndex TableView::keyboardIndex() const
{
    const QModelIndex current = currentIndex();
    return current.isValid() ? current : model()->index(0, horizontalHeader()->logicalIndex(0));
}

void TableView::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QTableView::currentChanged(current, previous); // repaints only the two cells
    viewport()->update(rowRect(previous));
    viewport()->update(rowRect(current));
}

void TableView::paintEvent(QPaintEvent* event)
{
    QTableView::paintEvent(event);
    paintRowFocus();
    paintEmptyText(*event);
}

// Only if the cell does not draw its own focus frame (CellDelegate), and only in the selected row: styles fill the
// frame, so another row would look selected. Whether a highlighted row needs a frame is up to the style.
void TableView::paintRowFocus()
{
    const QModelIndex index = currentIndex();
    const bool selected = index.isValid() && selectionModel()->isSelected(index);
    if (!hasFocus() || !selected || index.flags().testFlag(Qt::ItemIsEditable))
        return;
    QStyleOptionFocusRect option;
    option.initFrom(this);
    option.rect = rowRect(index);
    option.state |= QStyle::State_Selected;
    option.backgroundColor = palette().color(QPalette::Highlight);
    QPainter painter(viewport());
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
}

bool TableView::event(QEvent* event)
{
    const bool handled = QTableView::event(event);
    if (event->type() == QEvent::Paint) // of the frame; paintEvent paints the viewport
        paintFrameFocus();
    return handled;
}

void TableView::paintFrameFocus()
{
    const int width = frameWidth();
    if (!hasFocus() || width == 0)
        return;
    QPainter painter(this);
    painter.setPen(QPen(focusColour(palette()), width, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    const qreal middle = width / 2.0;
    painter.drawRect(QRectF(frameRect()).adjusted(middle, middle, -middle, -middle));
}

void TableView::paintEmptyText(const QPaintEvent& event)
{
    const QString text = displayedEmptyText();
    if (text != m_paintedEmptyText && !event.rect().contains(viewport()->rect()))
        viewport()->update(); // the rest still shows the previous text
    m_paintedEmptyText = text;
    if (text.isEmpty())
        return;
    QPainter painter(viewport());
    paintFaintText(painter, *this, viewport()->rect(), text);
}

void TableView::contextMenuEvent(QContextMenuEvent* event)
{
    if (event->reason() != QContextMenuEvent::Mouse) {
        if (selectedRow() < 0)
            return;
        scrollToRowNumber(selectedRow());
        const QRect row = rowRect(selectionModel()->selectedRows().first()) & viewport()->rect();
        Q_EMIT rowMenuRequested(viewport()->mapToGlobal(row.bottomLeft()));
        return;
    }
    const QModelIndex index = indexAt(viewport()->mapFromGlobal(event->globalPos()));
    if (!index.isValid())
        return;
    setCurrentIndex(index); // selects the row
    Q_EMIT rowMenuRequested(event->globalPos());
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
    for (int row = 0; row < m_cells.rowCount() && measured < maxMeasuredCells; ++row) {
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
    // An empty table keeps its column widths: it is often about to be refilled.
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
