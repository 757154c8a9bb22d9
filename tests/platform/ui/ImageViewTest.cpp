#include "platform/ui/ImageView.h"

#include "platform/ui/Images.h"

#include <QAccessible>
#include <QImage>
#include <gtest/gtest.h>

namespace {

bool showsAnything(ImageView& view)
{
    QImage image(view.sizeHint(), QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    const QImage blank = image;
    view.resize(view.sizeHint());
    view.render(&image, QPoint(), QRegion(), QWidget::RenderFlags());
    return image != blank;
}

TEST(ImageView, ShowsImage)
{
    ImageView view;
    EXPECT_FALSE(showsAnything(view));
    view.setImage(imageNamed(u"HANDSHAK"));
    EXPECT_TRUE(showsAnything(view));
    view.setImage({});
    EXPECT_FALSE(showsAnything(view));
}

TEST(ImageView, SizeIsInLinesOfText)
{
    ImageView view;
    view.setLines(4);
    const int side = 4 * view.fontMetrics().lineSpacing();
    EXPECT_EQ(view.sizeHint(), QSize(side, side));
    QFont larger = view.font();
    larger.setPointSize(larger.pointSize() * 2);
    view.setFont(larger);
    EXPECT_GT(view.sizeHint().height(), side);
}

TEST(ImageView, IsAccessibleAsGraphic)
{
    ImageView view;
    view.setAccessibleName(u"The radio is on"_qs);
    QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(&view);
    ASSERT_NE(accessible, nullptr);
    EXPECT_EQ(accessible->role(), QAccessible::Graphic);
    EXPECT_EQ(accessible->text(QAccessible::Name), u"The radio is on");
}

} // namespace
