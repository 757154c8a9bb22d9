#include "platform/ui/PictureDelegate.h"

#include <QApplication>

#include <utility>

void PictureDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    const QIcon picture = std::exchange(cell.icon, {});
    cell.features &= ~QStyleOptionViewItem::ViewItemFeatures(QStyleOptionViewItem::HasDecoration);
    const QStyle* const style = cell.widget != nullptr ? cell.widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget);
    const auto modeIfEnabled = cell.state.testFlag(QStyle::State_Selected) ? QIcon::Selected : QIcon::Normal;
    const auto mode = cell.state.testFlag(QStyle::State_Enabled) ? modeIfEnabled : QIcon::Disabled;
    const QRect place = QStyle::alignedRect(cell.direction, Qt::AlignCenter, cell.decorationSize, cell.rect);
    picture.paint(painter, place, Qt::AlignCenter, mode);
}
