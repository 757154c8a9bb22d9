#include "survey/NetworkSecurity.h"

#include "survey/AccessPointRows.h"
#include "tests/support/BssidListBuilder.h"
#include "tests/support/RecordingAssertionHandler.h"

#include <gtest/gtest.h>

namespace {

WpaClass classOf(const EntryBuilder& entry)
{
    Bytes buffer = inBuffer(bssidList({ entry }));
    return IsItemWPA(*BssidListWalk(buffer).next());
}

std::string encryptionOf(const EntryBuilder& entry)
{
    Bytes buffer = inBuffer(bssidList({ entry }));
    return encryptionTextOf(*BssidListWalk(buffer).next());
}

TEST(IsItemWPA, DependsOnTheFirstAkmSuite)
{
    EXPECT_EQ(classOf(EntryBuilder()), WpaClass::NoWpa);
    EXPECT_EQ(classOf(wpaEntry(2, 1)), WpaClass::Enterprise);
    EXPECT_EQ(classOf(wpaEntry(2, 2)), WpaClass::PreSharedKey);
    EXPECT_EQ(classOf(wpaEntry(2, 0)), WpaClass::PreSharedKey);
    EXPECT_EQ(classOf(wpaEntry(2, 9)), WpaClass::NoWpa);
}

TEST(IsItemWPA, PskIsWpaNoneOnlyInAnAdHocNetwork)
{
    EXPECT_EQ(classOf(wpaEntry(2, 2, Ndis802_11IBSS)), WpaClass::WpaNone);
    EXPECT_EQ(classOf(wpaEntry(2, 0, Ndis802_11IBSS)), WpaClass::WpaNone);
    EXPECT_EQ(classOf(wpaEntry(2, 1, Ndis802_11IBSS)), WpaClass::Enterprise);
    EXPECT_EQ(classOf(wpaEntry(2, 2, Ndis802_11AutoUnknown)), WpaClass::PreSharedKey);
}

TEST(IsItemWPA, SkipsAllPairwiseSuitesBeforeTheListIsShown)
{
    EXPECT_EQ(classOf(wpaEntry(2, 2, Ndis802_11Infrastructure, 3)), WpaClass::PreSharedKey);
}

TEST(IsItemWPA, UsesTheSuiteCountThatShowingTheListRewrote)
{
    Bytes buffer = inBuffer(bssidList({ wpaEntry(2, 2, Ndis802_11Infrastructure, 2) }));
    RecordingAssertionHandler assertions;
    (void)accessPointRows(buffer, assertions);
    EXPECT_EQ(IsItemWPA(*BssidListWalk(buffer).next()), WpaClass::NoWpa);
}

TEST(IsItemWPA, ZeroLengthElementEndsTheWalk)
{
    EntryBuilder entry;
    entry.elements = bytesOf({ 0, 2, 1, 0 });
    append(entry.elements, wpaElement(2, 2));
    EXPECT_EQ(classOf(entry), WpaClass::NoWpa);
}

TEST(EncryptionTextOf, IsTheCipherOfTheElementOrDependsOnPrivacy)
{
    EXPECT_EQ(encryptionOf(wpaEntry(2, 2)), "TKIP");
    EXPECT_EQ(encryptionOf(wpaEntry(3, 2)), "AES-WRAP");
    EXPECT_EQ(encryptionOf(wpaEntry(4, 2)), "AES-CCMP");
    EXPECT_EQ(encryptionOf(wpaEntry(5, 2)), "WEP");
    EntryBuilder open;
    EXPECT_EQ(encryptionOf(open), "Not Used");
    open.fixedPart.Privacy = 1;
    EXPECT_EQ(encryptionOf(open), "WEP");
}

} // namespace
