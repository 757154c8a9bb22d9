#pragma once

#include <QAbstractTableModel>
#include <QCollator>
#include <QIcon>
#include <QSortFilterProxyModel>

#include <vector>

class TableDataSource;

struct TableColumn {
    enum class Kind { Text, Number, Image };

    QString identifier;
    QString title;
    Kind kind { Kind::Text };
    QString description {}; // tool tip of the header, and its name where it has no title
    bool editable { false };
};

// The cells of a TableView as its data source last gave them. Row n is row n of the source.
class CellModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    // A double for a number, 0.0 for an image and 1.0 for its absence, else a text.
    static constexpr int sortRole = Qt::UserRole;

    using QAbstractTableModel::QAbstractTableModel;

    void setColumns(std::vector<TableColumn> columns);
    void setDataSource(TableDataSource* source);
    // -1 when no column has this identifier.
    [[nodiscard]] int columnOf(QStringView identifier) const;
    [[nodiscard]] int firstTextColumn() const; // 0 when there is none
    // Rows that the source has now.
    [[nodiscard]] int availableRows() const;
    // Characters of a cell's text.
    [[nodiscard]] qsizetype textLength(int row, int column) const;
    // Pulls every cell and announces only what differs from before. False when nothing did.
    bool reload();

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Cell {
        QString text;
        QIcon image;
        qint64 imageKey { 0 };
        QString imageText; // for those who do not see the image

        bool operator==(const Cell& other) const
        {
            return imageKey == other.imageKey && text == other.text && imageText == other.imageText;
        }
    };
    using Row = std::vector<Cell>;
    using ChangedCells = std::vector<bool>; // of one row, by its columns

    [[nodiscard]] Row pullRow(int row) const;
    [[nodiscard]] static QVariant sortValue(const Cell& cell, TableColumn::Kind kind);
    bool removeRowsFrom(int count);
    [[nodiscard]] ChangedCells updateRow(int row);
    void announce(int firstRow, int lastRow, const ChangedCells& changed);
    bool updateRows();
    bool appendRowsUpTo(int count);

    std::vector<TableColumn> m_columns;
    std::vector<Row> m_rows;
    TableDataSource* m_source { nullptr };
};

// Sorts by any column: numbers as numbers, texts as the user's language does, equal ones in the source's order.
class CellSorting final : public QSortFilterProxyModel {
    Q_OBJECT

public:
    explicit CellSorting(QObject* parent = nullptr);

protected:
    [[nodiscard]] bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

private:
    QCollator m_collator;
};
