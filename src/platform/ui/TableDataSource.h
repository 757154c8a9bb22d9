#pragma once

#include <QString>
#include <QStringView>
#include <QVariant>

// The contents of a TableView. Row numbers start at 0 and do not depend on the sorting of the view. reloadData queries
// everything except tool tips, which are queried when shown.
class TableDataSource {
public:
    virtual ~TableDataSource() = default;
    [[nodiscard]] virtual int numberOfRowsInTableView() const = 0;
    // A text; for an image column a QIcon, a QPixmap or a null variant.
    [[nodiscard]] virtual QVariant objectValueForTableColumn(QStringView identifier, int row) const = 0;
    // The alternative text of an image, for assistive technology.
    [[nodiscard]] virtual QString imageTextForTableColumn(QStringView /*identifier*/, int /*row*/) const { return {}; }
    // Called when the user has edited a cell of an editable column.
    virtual void setObjectValue(const QVariant& value, QStringView identifier, int row) = 0;
    // Empty for no tool tip.
    [[nodiscard]] virtual QString toolTipForTableColumn(QStringView /*identifier*/, int /*row*/) const { return {}; }
};
