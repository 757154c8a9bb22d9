#pragma once

#include <QMenu>

#include <vector>

class QPushButton;
class TableView;

// The context menu of a table's selected row: the buttons that act on it, and Copy.
class RowMenu final : public QMenu {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(RowMenu)

public:
    // The first button is the default action, that of a double click. The key of Copy works in the area and its
    // children. The table is the parent of the menu; the buttons outlive it.
    RowMenu(TableView& table, const std::vector<QPushButton*>& buttons, QWidget& area);
    ~RowMenu() override = default;

    // A blocked menu is closed and does not open, and its keys do nothing.
    void setBlocked(bool blocked);

private:
    // The displayed texts of the row from left to right, separated by tabs.
    void copyRow() const;

    TableView& m_table;
    QAction* m_copy;
};
