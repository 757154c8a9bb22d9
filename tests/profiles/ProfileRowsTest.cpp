#include "profiles/ProfileRows.h"

#include "tests/profiles/SampleProfile.h"

#include <gtest/gtest.h>

namespace {

ProfileItem rowOf(const QString& authentication, const QString& encryption, const QString& network)
{
    return profileItem(with(sampleProfile(),
        { { ProfileKey::authenticationType, authentication }, { ProfileKey::encryptionType, encryption },
            { ProfileKey::networkType, network } }));
}

TEST(ProfileRows, ShowNameAndSsidAsStored)
{
    const ProfileItem item = profileItem(sampleProfile(u" My profile "_qs));
    EXPECT_EQ(item.profile(), u" My profile "_qs);
    EXPECT_EQ(item.ssid(), u"home"_qs);
}

TEST(ProfileRows, AlwaysShowAnAutomaticChannel)
{
    EXPECT_EQ(profileItem(sampleProfile()).channel(), u"Auto"_qs);
    EXPECT_EQ(rowOf(u"0"_qs, u"0"_qs, u"0"_qs).channel(), u"Auto"_qs);
}

TEST(ProfileRows, NameTheAuthentication)
{
    EXPECT_EQ(rowOf(u"0"_qs, u"0"_qs, u"1"_qs).authentication(), u"Open"_qs);
    EXPECT_EQ(rowOf(u"1"_qs, u"0"_qs, u"0"_qs).authentication(), u"Shared"_qs);
    EXPECT_EQ(rowOf(u"2"_qs, u"0"_qs, u"0"_qs).authentication(), u"WPA-NONE"_qs);
    EXPECT_EQ(rowOf(u"2"_qs, u"0"_qs, u"1"_qs).authentication(), u"WPA-PSK"_qs);
    EXPECT_EQ(rowOf(u"2"_qs, u"0"_qs, u"7"_qs).authentication(), u"2"_qs);
    EXPECT_EQ(rowOf(u"03"_qs, u"0"_qs, u"1"_qs).authentication(), u"03"_qs);
    EXPECT_EQ(rowOf(u"-1"_qs, u"0"_qs, u"1"_qs).authentication(), u"-1"_qs);
}

TEST(ProfileRows, NameTheEncryption)
{
    for (const QString& wep : { u"0"_qs, u"1"_qs }) {
        EXPECT_EQ(rowOf(wep, u"0"_qs, u"1"_qs).encryption(), u"UnKnown"_qs);
        EXPECT_EQ(rowOf(wep, u"1"_qs, u"1"_qs).encryption(), u"WEP"_qs);
        EXPECT_EQ(rowOf(wep, u"2"_qs, u"1"_qs).encryption(), u"2"_qs);
        EXPECT_EQ(rowOf(wep, u"1"_qs, u"9"_qs).encryption(), u"WEP"_qs);
    }
    EXPECT_EQ(rowOf(u"2"_qs, u"0"_qs, u"1"_qs).encryption(), u"TKIP"_qs);
    EXPECT_EQ(rowOf(u"2"_qs, u"1"_qs, u"1"_qs).encryption(), u"AES"_qs);
    EXPECT_EQ(rowOf(u"2"_qs, u"2"_qs, u"1"_qs).encryption(), u"2"_qs);
    for (const QString& stored : { u"0"_qs, u"1"_qs, u"5"_qs, u""_qs })
        EXPECT_EQ(rowOf(u"2"_qs, stored, u"0"_qs).encryption(), u"UnKnown"_qs);
    EXPECT_EQ(rowOf(u"2"_qs, u"1"_qs, u"7"_qs).encryption(), u"1"_qs);
    EXPECT_EQ(rowOf(u"3"_qs, u"1"_qs, u"1"_qs).encryption(), u"1"_qs);
}

TEST(ProfileRows, NameTheNetworkType)
{
    EXPECT_EQ(rowOf(u"0"_qs, u"0"_qs, u"0"_qs).network(), u"Ad Hoc"_qs);
    EXPECT_EQ(rowOf(u"0"_qs, u"0"_qs, u"1"_qs).network(), u"Infrastructure"_qs);
    EXPECT_EQ(rowOf(u"0"_qs, u"0"_qs, u"2"_qs).network(), u"2"_qs);
}

TEST(ProfileRows, ReadMissingKeysAsZero)
{
    const ProfileItem item = profileItem({});
    EXPECT_EQ(item.profile(), QString());
    EXPECT_EQ(item.authentication(), u"Open"_qs);
    EXPECT_EQ(item.encryption(), u"UnKnown"_qs);
    EXPECT_EQ(item.network(), u"Ad Hoc"_qs);
}

TEST(ProfileRows, FollowTheOrderOfTheList)
{
    const auto items = profileItems({ sampleProfile(u"b"_qs), sampleProfile(u"a"_qs) });
    ASSERT_EQ(items.size(), 2u);
    EXPECT_EQ(items[0].profile(), u"b"_qs);
    EXPECT_EQ(items[1].profile(), u"a"_qs);
}

} // namespace
