#include "platform/ui/ImageView.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QPainter>

namespace {

QAccessibleInterface* makeAccessibleImage(const QString& className, QObject* object)
{
    if (className != QLatin1String(ImageView::staticMetaObject.className()))
        return nullptr;
    return new QAccessibleWidget(static_cast<QWidget*>(object), QAccessible::Graphic);
}

} // namespace

ImageView::ImageView(QWidget* parent)
    : QWidget(parent)
{
    static const bool factoryInstalled = [] {
        QAccessible::installFactory(makeAccessibleImage);
        return true;
    }();
    (void)factoryInstalled;
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void ImageView::setImage(const QIcon& image)
{
    m_image = image;
    update();
}

void ImageView::setLines(int lines)
{
    m_lines = lines;
    updateGeometry();
}

QSize ImageView::sizeHint() const
{
    const int side = m_lines * fontMetrics().lineSpacing();
    return { side, side };
}

QSize ImageView::minimumSizeHint() const
{
    return sizeHint();
}

void ImageView::paintEvent([[maybe_unused]] QPaintEvent* event)
{
    QPainter painter(this);
    m_image.paint(&painter, rect(), Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
}
