#pragma once

#include "platform/ui/CellDelegate.h"
#include "platform/ui/CellModel.h"
#include "platform/ui/NumberDelegate.h"
#include "platform/ui/PictureDelegate.h"
#include "platform/ui/TableDataSource.h"

#include <QTableView>

#include <functional>
#include <vector>

// A table over a data source. Rows are spoken of by the source's numbers, whatever the sorting: a click on a header
// sorts up, a second one down, a third one restores the source's order. One row or none is selected; a key that moves
// through the table selects the row that it comes to, and what is typed is looked for among the first texts of the
// rows.
class TableView : public QTableView {
    Q_OBJECT

public:
    explicit TableView(QWidget* parent = nullptr);

    void setTableColumns(std::vector<TableColumn> columns);
    // The delegate stays its owner's. An identifier that no column has is ignored.
    void setDelegateForTableColumn(QStringView identifier, QAbstractItemDelegate* delegate);
    // The source outlives the view or is taken away with nullptr. Nothing is asked for before reloadData.
    void setDataSource(TableDataSource* source);

    // Takes over what the source has now. The selection stays on its row number while there is such a row. What did
    // not change is not painted again.
    void reloadData();
    [[nodiscard]] int numberOfRows() const; // as of the last reload
    [[nodiscard]] int selectedRow() const; // -1 when no row is selected
    void selectRowNumber(int row); // a row that is not there deselects
    void deselectAll();
    void keyboardSearch(const QString& search) override;

    // Called for a double click on a row, and for Return or Enter on the selected one; that row is selected by then.
    void setDoubleAction(std::function<void()> action);
    // Shown in the middle of a table without rows.
    void setEmptyText(const QString& text);
    // The text as it is at each painting: what it tells of may change while nobody can tell the table.
    void setEmptyTextSource(std::function<QString()> source);
    // To be called where the source is known to say something else.
    void updateEmptyText();
    [[nodiscard]] QString emptyText() const;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void setUpHeaders();
    void fitRowHeight();
    void fitColumnWidths();
    [[nodiscard]] int contentsWidth(int column) const;
    [[nodiscard]] QString textInsteadOfRows() const;
    [[nodiscard]] QAbstractItemDelegate* delegateFor(TableColumn::Kind kind);
    [[nodiscard]] QModelIndex keyboardPlace() const;
    [[nodiscard]] QRect rowRect(const QModelIndex& index) const;
    void paintEmptyText(const QPaintEvent& event);
    void paintFocusOfRow();

    CellDelegate m_cellDelegate;
    PictureDelegate m_pictureDelegate;
    NumberDelegate m_numberDelegate;
    CellModel m_cells;
    CellSorting m_sorting;
    std::function<void()> m_doubleAction;
    std::function<QString()> m_emptyTextSource;
    QString m_paintedEmptyText;
    std::vector<bool> m_sizedByUser; // by column
    bool m_fitting { false };
    bool m_fittedToRows { false };
};
