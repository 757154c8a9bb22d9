#include "platform/ui/PageScrollArea.h"

#include <QHBoxLayout>
#include <gtest/gtest.h>

namespace {

TEST(PageScrollArea, IsAsWideAsItsPageOnlyIfAsked)
{
    constexpr int pageWidth = 700;
    for (const auto minWidth : { PageScrollArea::MinWidth::Any, PageScrollArea::MinWidth::OfPage }) {
        auto* const page = new QWidget;
        auto* const inner = new QWidget(page);
        inner->setMinimumWidth(pageWidth);
        auto* const layout = new QHBoxLayout(page);
        layout->addWidget(inner);
        const PageScrollArea area(*page, minWidth);
        EXPECT_EQ(area.minimumSizeHint().width() >= pageWidth, minWidth == PageScrollArea::MinWidth::OfPage);
        EXPECT_GE(area.sizeHint().width(), pageWidth);
    }
}

} // namespace
