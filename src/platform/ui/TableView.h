#pragma once

#include "platform/ui/CellDelegate.h"
#include "platform/ui/CellModel.h"
#include "platform/ui/CellSortingModel.h"
#include "platform/ui/NumberDelegate.h"
#include "platform/ui/PictureDelegate.h"
#include "platform/ui/TableDataSource.h"

#include <QTableView>

#include <functional>
#include <vector>

// A table with a data source. Row numbers are those of the source, regardless of sorting. A click on a header sorts in
// ascending order (descending with TableColumn::descendingFirst), a second one reverses it, a third restores the
// source's order. At most one row is selected. Cursor keys select the row they move to; typing searches the first text
// column. The frame of the table shows the focus, so an unselected row never looks selected.
class TableView : public QTableView {
    Q_OBJECT

public:
    explicit TableView(QWidget* parent = nullptr);

    void setTableColumns(std::vector<TableColumn> columns);
    // Does not take ownership. Unknown identifiers are ignored.
    void setDelegateForTableColumn(QStringView identifier, QAbstractItemDelegate* delegate);
    // The source must outlive the view or be reset to nullptr. It is not queried before reloadData.
    void setDataSource(TableDataSource* source);

    // Fetches the current contents and repaints only what has changed. The selected row number stays selected as long
    // as the row exists.
    void reloadData();
    [[nodiscard]] int numberOfRows() const; // as of the last reload
    [[nodiscard]] int selectedRow() const; // -1 if no row is selected
    void selectRowNumber(int row); // an invalid row clears the selection
    void deselectAll();
    void scrollToRowNumber(int row); // only vertically; an invalid row is ignored
    void keyboardSearch(const QString& search) override;

    struct SortOrder {
        QString identifier; // of the column; empty for the order of the source
        Qt::SortOrder order { Qt::AscendingOrder };
    };
    [[nodiscard]] SortOrder sortedColumn() const;
    // An unknown identifier restores the order of the source.
    void sortByColumnWithIdentifier(const SortOrder& sorted);

    // Called for a double click on a row, after selecting it, and for Return or Enter while a row is selected.
    void setDoubleAction(std::function<void()> action);
    // Shown in the centre of an empty table.
    void setEmptyText(const QString& text);
    // Queried on every paint, for a text that depends on state without a change signal.
    void setEmptyTextSource(std::function<QString()> source);
    // Call this if the source returns a different text now.
    void updateEmptyText();
    [[nodiscard]] QString emptyText() const;

Q_SIGNALS:
    // A row was clicked with the right button, which selects it, or the menu key was pressed while a row is selected.
    void rowMenuRequested(const QPoint& globalPosition);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void setUpHeaders();
    void fitRowHeight();
    void fitColumnWidths();
    [[nodiscard]] int contentsWidth(int column) const;
    [[nodiscard]] QString displayedEmptyText() const;
    [[nodiscard]] QAbstractItemDelegate* delegateFor(TableColumn::Kind kind);
    [[nodiscard]] QModelIndex keyboardIndex() const;
    [[nodiscard]] QRect rowRect(const QModelIndex& index) const;
    void paintEmptyText(const QPaintEvent& event);
    void paintRowFocus();
    void paintFrameFocus();

    CellDelegate m_cellDelegate;
    PictureDelegate m_pictureDelegate;
    NumberDelegate m_numberDelegate;
    CellModel m_cells;
    CellSortingModel m_sorting;
    std::function<void()> m_doubleAction;
    std::function<QString()> m_emptyTextSource;
    QString m_paintedEmptyText;
    std::vector<bool> m_sizedByUser; // by column
    bool m_fitting { false };
    bool m_fittedToRows { false };
};
