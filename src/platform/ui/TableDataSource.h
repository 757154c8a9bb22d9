#pragma once

#include <QString>
#include <QStringView>
#include <QVariant>

// Where a TableView takes its contents from. Rows are numbered from 0 as the source counts them, however the view
// is sorted. Everything is asked for while reloadData runs, tool tips when one is about to be shown.
class TableDataSource {
public:
    virtual ~TableDataSource() = default;
    [[nodiscard]] virtual int numberOfRowsInTableView() const = 0;
    // A text, or for an image column a QIcon, QPixmap or nothing.
    [[nodiscard]] virtual QVariant objectValueForTableColumn(QStringView identifier, int row) const = 0;
    // What the image in a cell says, for those who do not see it.
    [[nodiscard]] virtual QString imageTextForTableColumn(QStringView /*identifier*/, int /*row*/) const { return {}; }
    // Stores what the user made of a cell of an editable column.
    virtual void setObjectValue(const QVariant& value, QStringView identifier, int row) = 0;
    // Empty for a cell without a tool tip.
    [[nodiscard]] virtual QString toolTipForTableColumn(QStringView /*identifier*/, int /*row*/) const { return {}; }
};
