#pragma once

#include <QObject>

#include <vector>

class QAction;
class QPushButton;
class TableView;

// The context menu of a table's selected row: the buttons that act on it, and Copy, also as the keyboard shortcut for
// copying. Opens with the right mouse button and with the Menu key.
class RowMenu final : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(RowMenu)

public:
    // The table owns the menu. The buttons must outlive it.
    RowMenu(TableView& table, std::vector<QPushButton*> buttons);
    ~RowMenu() override = default;

private:
    void open(const QPoint& position);
    // The displayed texts of the row from left to right, separated by tabs.
    void copyRow();

    TableView& m_table;
    std::vector<QPushButton*> m_buttons;
    QAction* m_copy;
};
