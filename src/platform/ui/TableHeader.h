#pragma once

#include <QHeaderView>

// The headings of a table. A right-aligned heading has the same space after it as the numbers below it
// (NumberDelegate).
class TableHeader final : public QHeaderView {
    Q_OBJECT

public:
    explicit TableHeader(QWidget* parent = nullptr);

protected:
    void initStyleOptionForIndex(QStyleOptionHeader* option, int logicalIndex) const override;
    [[nodiscard]] QSize sectionSizeFromContents(int logicalIndex) const override;

private:
    [[nodiscard]] bool isRightAligned(int logicalIndex) const;
};
