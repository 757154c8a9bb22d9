#include "profiles/ProfileItem.h"

#include <gtest/gtest.h>

#include <array>

namespace {

const std::array<QString, 6> columns { u"Profile"_qs, u"SSID"_qs, u"Channel"_qs, u"AuthenType"_qs, u"Encryption"_qs,
    u"NetworkType"_qs };

ProfileItem sixTexts()
{
    return ProfileItem::initWithProfile(u"p"_qs, u"s"_qs, u"c"_qs, u"a"_qs, u"e"_qs, u"n"_qs);
}

TEST(ProfileItem, StartsWithSixEmptyTexts)
{
    const ProfileItem item;
    for (const QString& column : columns)
        EXPECT_EQ(item.value(column), QString());
}

TEST(ProfileItem, HasAValueForEachColumn)
{
    const ProfileItem item = sixTexts();
    const std::array<QString, 6> texts { u"p"_qs, u"s"_qs, u"c"_qs, u"a"_qs, u"e"_qs, u"n"_qs };
    for (std::size_t i = 0; i < columns.size(); ++i)
        EXPECT_EQ(item.value(columns[i]), texts[i]);
    const std::array<QString, 6> accessed { item.profile(), item.ssid(), item.channel(), item.authentication(),
        item.encryption(), item.network() };
    EXPECT_EQ(accessed, texts);
}

TEST(ProfileItem, SetsOnlyOneColumn)
{
    for (const QString& changed : columns) {
        ProfileItem item = sixTexts();
        item.setValue(changed, u"new"_qs);
        for (const QString& column : columns)
            EXPECT_EQ(item.value(column), column == changed ? u"new"_qs : sixTexts().value(column));
    }
}

TEST(ProfileItem, HasNoValueForAnUnknownKey)
{
    ProfileItem item = sixTexts();
    item.setValue(u"pi", u"new"_qs);
    EXPECT_EQ(item.value(u"pi"), QString());
    EXPECT_EQ(item.value(u"ssid"), QString());
    EXPECT_EQ(item.value(u"Profile"), u"p"_qs);
}

TEST(ProfileItem, SettersSetEachText)
{
    ProfileItem item;
    item.setprofile(u"p"_qs);
    item.setssid(u"s"_qs);
    item.setchannel(u"c"_qs);
    item.setauthentication(u"a"_qs);
    item.setencryption(u"e"_qs);
    item.setnetwork(u"n"_qs);
    for (const QString& column : columns)
        EXPECT_EQ(item.value(column), sixTexts().value(column));
}

TEST(ProfileItem, DescriptionIsEmpty)
{
    EXPECT_EQ(sixTexts().description(), QString());
}

} // namespace
