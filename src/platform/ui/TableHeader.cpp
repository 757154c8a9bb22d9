#include "platform/ui/TableHeader.h"

#include "platform/ui/NumberDelegate.h"

#include <QStyleOptionHeader>

TableHeader::TableHeader(QWidget* parent)
    : QHeaderView(Qt::Horizontal, parent)
{
    setSectionsClickable(true);
}

bool TableHeader::isRightAligned(int logicalIndex) const
{
    const QVariant alignment = model()->headerData(logicalIndex, orientation(), Qt::TextAlignmentRole);
    return (alignment.toInt() & Qt::AlignRight) != 0;
}

void TableHeader::initStyleOptionForIndex(QStyleOptionHeader* option, int logicalIndex) const
{
    QHeaderView::initStyleOptionForIndex(option, logicalIndex);
    if (isRightAligned(logicalIndex))
        option->text += spaceAfterNumber;
}

QSize TableHeader::sectionSizeFromContents(int logicalIndex) const
{
    const QSize size = QHeaderView::sectionSizeFromContents(logicalIndex);
    const int space = isRightAligned(logicalIndex) ? fontMetrics().horizontalAdvance(spaceAfterNumber) : 0;
    return { size.width() + space, size.height() };
}
