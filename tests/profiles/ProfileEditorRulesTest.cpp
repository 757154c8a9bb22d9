#include "profiles/ProfileEditorRules.h"

#include "tests/profiles/SampleProfile.h"
#include "tests/support/BssidListBuilder.h"

#include <gtest/gtest.h>

namespace {

using Items = std::vector<QString>;

ProfileList named(std::initializer_list<QString> names)
{
    ProfileList list;
    for (const QString& name : names)
        list.push_back(sampleProfile(name));
    return list;
}

TEST(NextProfileName, StartsWithOne)
{
    EXPECT_EQ(GetNextProfileName({}), u"PROF1"_qs);
}

TEST(NextProfileName, IsOneMoreThanTheMaximum)
{
    EXPECT_EQ(GetNextProfileName(named({ u"Prof7"_qs, u"PROF3"_qs })), u"PROF8"_qs);
    EXPECT_EQ(GetNextProfileName(named({ u"PROF2"_qs, u"prof10"_qs, u"Office"_qs })), u"PROF11"_qs);
    EXPECT_EQ(GetNextProfileName(named({ u"PROF2 at work"_qs })), u"PROF3"_qs);
}

TEST(NextProfileName, ReadsTheNumberFromTheFifthCharacter)
{
    EXPECT_EQ(GetNextProfileName(named({ u"MYPROF9"_qs })), u"PROF1"_qs);
    EXPECT_EQ(GetNextProfileName(named({ u"abcd12PROF"_qs })), u"PROF13"_qs);
    EXPECT_EQ(GetNextProfileName(named({ u"PROF"_qs })), u"PROF1"_qs);
    EXPECT_EQ(GetNextProfileName(named({ u"PROF 6"_qs })), u"PROF7"_qs);
    EXPECT_EQ(GetNextProfileName(named({ u"PROF-6"_qs })), u"PROF1"_qs);
    EXPECT_EQ(GetNextProfileName(named({ u"1234567"_qs, u"PRO"_qs, QString() })), u"PROF1"_qs);
}

TEST(NextProfileName, ContinuesAfterTheMaximumInteger)
{
    EXPECT_EQ(GetNextProfileName(named({ u"PROF2147483647"_qs })), u"PROF2147483648"_qs);
    EXPECT_EQ(GetNextProfileName(named({ u"PROF99999999999"_qs })), u"PROF2147483648"_qs);
}

TEST(NetworkTypeRules, AdHocNetworksHaveAChannelAndTheirOwnAuthenticationList)
{
    EXPECT_TRUE(channelEnabled(0));
    EXPECT_EQ(authenticationKindOf(0), 0);
    for (const int other : { 1, 2, -1 }) {
        EXPECT_FALSE(channelEnabled(other));
        EXPECT_EQ(authenticationKindOf(other), 1);
    }
}

TEST(ChannelIndex, IsTheChannelMinusOne)
{
    EXPECT_EQ(channelIndexOf(1), 0);
    EXPECT_EQ(channelIndexOf(11), 10);
    for (const int none : { 0, -1, std::numeric_limits<int>::min() })
        EXPECT_EQ(channelIndexOf(none), -1);
}

TEST(SelFlag, IsSetByWpaAndKeptWithoutAnAuthentication)
{
    for (const int selFlag : { 0, 1 }) {
        EXPECT_EQ(selFlagAfter(0, selFlag), 0);
        EXPECT_EQ(selFlagAfter(1, selFlag), 0);
        EXPECT_EQ(selFlagAfter(2, selFlag), 1);
        EXPECT_EQ(selFlagAfter(-1, selFlag), selFlag);
        EXPECT_EQ(selFlagAfter(3, selFlag), selFlag);
    }
}

TEST(SsidList, HasAllNamesInScanOrder)
{
    Bytes list = inBuffer(
        bssidList({ EntryBuilder("b"), EntryBuilder(""), EntryBuilder("a"), EntryBuilder("b"), EntryBuilder("x\0y") }));
    EXPECT_EQ(GetBssidList(list), (Items { u"b"_qs, QString(), u"a"_qs, u"b"_qs, u"x"_qs }));
    EXPECT_EQ(GetBssidList({}), Items());
}

TEST(SsidOfEditedProfile, IsTheFirstMatchingItem)
{
    EXPECT_EQ(ssidOfEditedProfile({ u"a"_qs, u"b"_qs, u"b"_qs }, u"b"_qs), (SsidSelection { 1, u"b"_qs }));
}

TEST(SsidOfEditedProfile, SelectsTheLastItemWithItsOwnNameWithoutAMatch)
{
    EXPECT_EQ(ssidOfEditedProfile({ u"a"_qs, u"b"_qs }, u"c"_qs), (SsidSelection { 1, u"c"_qs }));
}

TEST(SsidOfEditedProfile, DoesNotChangeWithAnEmptyList)
{
    EXPECT_EQ(ssidOfEditedProfile({}, u"c"_qs), std::nullopt);
}

TEST(SsidOfScannedNetwork, IsTheMatchingItemOrTheFirst)
{
    EXPECT_EQ(ssidOfScannedNetwork({ u"a"_qs, u"b"_qs, u"b"_qs }, u"b"_qs), (SsidSelection { 1, u"b"_qs }));
    EXPECT_EQ(ssidOfScannedNetwork({ u"a"_qs, u"b"_qs }, u"c"_qs), (SsidSelection { 0, u"a"_qs }));
    EXPECT_EQ(ssidOfScannedNetwork({}, u"c"_qs), std::nullopt);
}

TEST(ThresholdSlider, IsClampedToItsRange)
{
    EXPECT_EQ(sliderValueOf(u"500"_qs, rtsThresholdRange), 500);
    EXPECT_EQ(sliderValueOf(u"9999"_qs, rtsThresholdRange), 2347);
    EXPECT_EQ(sliderValueOf(QString(), rtsThresholdRange), 0);
    EXPECT_EQ(sliderValueOf(u"0"_qs, fragmentationThresholdRange), 256);
    EXPECT_EQ(sliderValueOf(u"2347"_qs, fragmentationThresholdRange), 2346);
}

TEST(FittingSsid, IsTruncatedTo32BytesBetweenCharacters)
{
    EXPECT_EQ(fittingSsid(QString()), QString());
    EXPECT_EQ(fittingSsid(QString(32, u'a')), QString(32, u'a'));
    EXPECT_EQ(fittingSsid(QString(33, u'a')), QString(32, u'a'));
    EXPECT_EQ(fittingSsid(QString(11, u'\u20ac')), QString(10, u'\u20ac')) << "three bytes each";
    const QString smile = u"\U0001F600"_qs; // four bytes, two units
    EXPECT_EQ(fittingSsid(QString(30, u'a') + smile), QString(30, u'a'));
    EXPECT_EQ(fittingSsid(smile.repeated(9)), smile.repeated(8));
    const QString raw(33, QChar(u'\uEFFF')); // one malformed byte each
    EXPECT_EQ(fittingSsid(raw), raw.left(32));
}

} // namespace
