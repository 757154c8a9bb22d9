#include "survey/AccessPointText.h"

#include "platform/NetworkName.h"

#include <gtest/gtest.h>

namespace {

AccessPoint rowOf(const QString& name)
{
    return AccessPoint::initWithSSID(
        name, u"00-11-22-33-44-01"_qs, u"63"_qs, u"1"_qs, u"WPA-PSK"_qs, u"TKIP"_qs, u"Infrastructure"_qs);
}

TEST(AccessPointText, SeparatesTheDisplayedTextsByTabs)
{
    EXPECT_EQ(tabSeparatedText(rowOf(u"café"_qs)), u"café\t00-11-22-33-44-01\t63\t1\tWPA-PSK\tTKIP\tInfrastructure"_qs);
}

TEST(AccessPointText, NameIsTheDisplayedOne)
{
    const QString hidden = tabSeparatedText(rowOf({}));
    EXPECT_TRUE(hidden.startsWith(NetworkName::hiddenPlaceholder() + u'\t'));
    const QString hostile = tabSeparatedText(rowOf(u"a\tb\nc"_qs));
    EXPECT_EQ(hostile.count(u'\t'), 6);
    EXPECT_FALSE(hostile.contains(u'\n'));
}

} // namespace
