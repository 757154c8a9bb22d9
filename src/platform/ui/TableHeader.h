#pragma once

#include <QHeaderView>

// The headings of a table. One at the right of its column, above figures, stands as far from the next column as they do
// (NumberDelegate).
class TableHeader final : public QHeaderView {
    Q_OBJECT

public:
    explicit TableHeader(QWidget* parent = nullptr);

protected:
    void initStyleOptionForIndex(QStyleOptionHeader* option, int logicalIndex) const override;
    [[nodiscard]] QSize sectionSizeFromContents(int logicalIndex) const override;

private:
    [[nodiscard]] bool standsAtTheRight(int logicalIndex) const;
};
