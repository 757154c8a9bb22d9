#pragma once

#include <QAbstractTableModel>
#include <QIcon>

#include <vector>

class TableDataSource;

struct TableColumn {
    enum class Kind { Text, Number, Image };

    QString identifier;
    QString title;
    Kind kind { Kind::Text };
    QString description {}; // tool tip of the header; its accessible name if it has no title
    bool editable { false };
    bool descendingFirst { false }; // the first click on the header sorts in descending order
};

// Caches the cells of a TableView as of the last reload. Row n is row n of the data source.
class CellModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    // A double for a number, 0.0 for an image, 1.0 for a missing image; otherwise a text.
    static constexpr int sortRole = Qt::UserRole;

    using QAbstractTableModel::QAbstractTableModel;

    void setColumns(std::vector<TableColumn> columns);
    void setDataSource(TableDataSource* source);
    // -1 if no column has this identifier.
    [[nodiscard]] int columnOf(QStringView identifier) const;
    // Empty if there is no such column.
    [[nodiscard]] QString identifierOf(int column) const;
    [[nodiscard]] int firstTextColumn() const; // 0 if there is none
    // Current number of rows of the source.
    [[nodiscard]] int availableRows() const;
    // Length of the text of a cell, in UTF-16 units.
    [[nodiscard]] qsizetype textLength(int row, int column) const;
    // Fetches all cells and signals only the changed ones. False if nothing has changed.
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
        QString imageText; // alternative text for assistive technology

        bool operator==(const Cell& other) const
        {
            return imageKey == other.imageKey && text == other.text && imageText == other.imageText;
        }
    };
    using Row = std::vector<Cell>;

    [[nodiscard]] Row fetchRow(int row) const;
    [[nodiscard]] static QVariant sortValue(const Cell& cell, TableColumn::Kind kind);
    bool removeRowsFrom(int count);
    bool updateRow(int row);
    bool updateRows();
    bool appendRowsUpTo(int count);

    std::vector<TableColumn> m_columns;
    std::vector<Row> m_rows;
    TableDataSource* m_source { nullptr };
};
