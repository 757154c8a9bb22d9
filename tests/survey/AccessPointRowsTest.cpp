#include "survey/AccessPointRows.h"

#include "driver/BssidList.h"
#include "driver/MacAddressText.h"
#include "tests/support/BssidListBuilder.h"
#include "tests/support/RecordingAssertionHandler.h"

#include <gtest/gtest.h>

namespace {

AccessPoint rowOf(const EntryBuilder& entry)
{
    RecordingAssertionHandler assertions;
    Bytes buffer = inBuffer(bssidList({ entry }));
    const auto result = accessPointRows(buffer, assertions);
    EXPECT_TRUE(result.complete);
    return result.rows.empty() ? AccessPoint() : result.rows.front();
}

TEST(AccessPointRows, OpenNetworkShowsAllSevenTexts)
{
    EXPECT_EQ(rowOf(EntryBuilder("café")).description(),
        QStringLiteral("café 00-11-22-33-44-01 63 1 Unknown Not Used Infrastructure"));
}

TEST(AccessPointRows, PrivacyWithoutAWpaElementIsWepAndUnknown)
{
    EntryBuilder entry;
    entry.fixedPart.Privacy = 7;
    EXPECT_EQ(rowOf(entry).encryption(), QStringLiteral("WEP"));
    EXPECT_EQ(rowOf(entry).authentication(), QStringLiteral("Unknown"));
}

TEST(AccessPointRows, WpaElementNamesCipherAndAuthentication)
{
    EXPECT_EQ(rowOf(wpaEntry(tkip, 2)).encryption(), QStringLiteral("TKIP"));
    EXPECT_EQ(rowOf(wpaEntry(tkip, 2)).authentication(), QStringLiteral("WPA-PSK"));
    EXPECT_EQ(rowOf(wpaEntry(ccmp, 0)).encryption(), QStringLiteral("AES-CCMP"));
    EXPECT_EQ(rowOf(wpaEntry(ccmp, 0)).authentication(), QStringLiteral("WPA-PSK"));
    EXPECT_EQ(rowOf(wpaEntry(3, 1)).encryption(), QStringLiteral("AES-WRAP"));
    EXPECT_EQ(rowOf(wpaEntry(3, 1)).authentication(), QStringLiteral("WPA"));
}

TEST(AccessPointRows, PskInAnAdHocNetworkIsWpaNone)
{
    EXPECT_EQ(rowOf(wpaEntry(tkip, 2, Ndis802_11IBSS)).authentication(), QStringLiteral("WPA-NONE"));
    EXPECT_EQ(rowOf(wpaEntry(tkip, 0, Ndis802_11IBSS)).authentication(), QStringLiteral("WPA-NONE"));
    EXPECT_EQ(rowOf(wpaEntry(tkip, 1, Ndis802_11IBSS)).authentication(), QStringLiteral("WPA"));
    EXPECT_EQ(rowOf(wpaEntry(tkip, 2, Ndis802_11IBSS)).network(), QStringLiteral("Ad Hoc"));
}

TEST(AccessPointRows, UnknownSuitesDoNotChangeTheTexts)
{
    EXPECT_EQ(rowOf(wpaEntry(5, 2)).encryption(), QStringLiteral("WEP"));
    EXPECT_EQ(rowOf(wpaEntry(5, 2)).authentication(), QStringLiteral("WPA-PSK"));
    EXPECT_EQ(rowOf(wpaEntry(tkip, 9)).authentication(), QStringLiteral("Unknown"));
}

TEST(AccessPointRows, PairwiseCountInTheListBecomesOne)
{
    EntryBuilder entry;
    entry.elements = wpaElement(tkip, 2, 2);
    RecordingAssertionHandler assertions;
    Bytes buffer = inBuffer(bssidList({ entry }));
    const auto first = accessPointRows(buffer, assertions);
    EXPECT_EQ(buffer[4 + 128 + 12], std::byte { 1 });
    EXPECT_EQ(buffer[4 + 128 + 13], std::byte { 0 });
    // Only one suite is skipped: the second one is read as the AKM suites.
    EXPECT_EQ(first.rows.front().authentication(), QStringLiteral("Unknown"));
    EXPECT_EQ(first.rows.front().encryption(), QStringLiteral("TKIP"));
}

TEST(AccessPointRows, PairwiseCountInTheHighByteBecomesOne)
{
    EntryBuilder entry;
    entry.elements = wpaElement(tkip, 2);
    entry.elements[12] = std::byte { 0 };
    entry.elements[13] = std::byte { 1 };
    RecordingAssertionHandler assertions;
    Bytes buffer = inBuffer(bssidList({ entry }));
    EXPECT_EQ(accessPointRows(buffer, assertions).rows.front().authentication(), QStringLiteral("WPA-PSK"));
    EXPECT_EQ(buffer[4 + 128 + 12], std::byte { 1 });
    EXPECT_EQ(buffer[4 + 128 + 13], std::byte { 0 });
}

// The count of such an element lies in the next entry, whose Length an access point must not be able to change.
TEST(AccessPointRows, TruncatedElementDoesNotChangeTheNextEntry)
{
    for (const std::size_t elementSize : { 12U, 13U }) {
        EntryBuilder cut("cut", 1);
        cut.elements = wpaElement(tkip, 2);
        cut.elements.resize(elementSize);
        cut.keepLengths = true;
        cut.fixedPart.Length = static_cast<std::uint32_t>(sizeof(WLAN_BSSID_EX) + elementSize);
        cut.fixedPart.IELength = 60;
        RecordingAssertionHandler assertions;
        Bytes buffer = inBuffer(bssidList({ cut, EntryBuilder("b", 2), EntryBuilder("c", 3) }));
        const Bytes before = buffer;
        EXPECT_EQ(accessPointRows(buffer, assertions).rows.size(), 3U);
        EXPECT_EQ(buffer, before);
    }
}

TEST(AccessPointRows, GroupSuiteWithAnotherOuiDoesNotChangeTheList)
{
    EntryBuilder entry = wpaEntry(tkip, 2);
    entry.elements = wpaElement(tkip, 2, 2);
    entry.elements[9] = std::byte { 0x10 }; // 00-10-F2
    RecordingAssertionHandler assertions;
    Bytes buffer = inBuffer(bssidList({ entry }));
    const Bytes before = buffer;
    const auto rows = accessPointRows(buffer, assertions).rows;
    EXPECT_EQ(rows.front().authentication(), QStringLiteral("Unknown"));
    EXPECT_EQ(rows.front().encryption(), QStringLiteral("WEP"));
    EXPECT_EQ(buffer, before);
}

TEST(AccessPointRows, NameOf32BytesContinuesToTheNextZero)
{
    EntryBuilder open("12345678901234567890123456789012");
    EXPECT_EQ(rowOf(open).ssid(), QStringLiteral("12345678901234567890123456789012"));
    open.fixedPart.Privacy = 1;
    const QString name = rowOf(open).ssid();
    EXPECT_EQ(name.size(), 33);
    EXPECT_TRUE(name.startsWith(QStringLiteral("12345678901234567890123456789012")));
}

TEST(AccessPointRows, SsidLengthIsIgnored)
{
    EntryBuilder entry("hello");
    entry.fixedPart.Ssid.SsidLength = 2;
    EXPECT_EQ(rowOf(entry).ssid(), QStringLiteral("hello"));
}

TEST(AccessPointRows, UnknownNetworkTypeIsEmpty)
{
    EntryBuilder entry;
    entry.fixedPart.InfrastructureMode = 9;
    EXPECT_EQ(rowOf(entry).network(), QString());
}

TEST(AccessPointRows, UnknownFrequencyEndsTheRefreshAfterThePreviousRows)
{
    EntryBuilder lost("lost", 2);
    lost.fixedPart.Configuration.DSConfig = 2419000;
    RecordingAssertionHandler assertions;
    Bytes buffer = inBuffer(bssidList({ EntryBuilder("a", 1), lost, EntryBuilder("c", 3) }));
    const auto result = accessPointRows(buffer, assertions);
    EXPECT_FALSE(result.complete);
    ASSERT_EQ(result.rows.size(), 1u);
    ASSERT_EQ(assertions.failures.size(), 1u);
    EXPECT_EQ(assertions.failures[0].method, "RescanTimeFunc");
    EXPECT_EQ(assertions.failures[0].file, "SiteSurveyPageController");
    EXPECT_EQ(assertions.failures[0].lineNumber, 978);
    EXPECT_EQ(assertions.failures[0].description, "Invalid parameter not satisfying: FALSE");
}

TEST(AccessPointRows, UnknownFrequencyUsesTheFirstChannelIfTheHandlerContinues)
{
    EntryBuilder lost("lost");
    lost.fixedPart.Configuration.DSConfig = 0;
    RecordingAssertionHandler assertions;
    assertions.goOn = true;
    Bytes buffer = inBuffer(bssidList({ lost, EntryBuilder("c", 3) }));
    const auto result = accessPointRows(buffer, assertions);
    EXPECT_TRUE(result.complete);
    ASSERT_EQ(result.rows.size(), 2u);
    EXPECT_EQ(result.rows[0].channel(), QStringLiteral("1"));
}

TEST(AccessPointRows, EmptyOrAbsentListGivesNoRows)
{
    RecordingAssertionHandler assertions;
    Bytes empty = inBuffer({});
    EXPECT_TRUE(accessPointRows(empty, assertions).rows.empty());
    EXPECT_TRUE(accessPointRows({}, assertions).rows.empty());
}

TEST(AccessPointRows, RowsHaveTheOrderOfTheEntries)
{
    RecordingAssertionHandler assertions;
    Bytes buffer = inBuffer(bssidList({ EntryBuilder("z", 1), EntryBuilder("a", 2), EntryBuilder("m", 3) }));
    const auto result = accessPointRows(buffer, assertions);
    ASSERT_EQ(result.rows.size(), 3u);
    EXPECT_EQ(result.rows[0].ssid(), QStringLiteral("z"));
    EXPECT_EQ(result.rows[1].ssid(), QStringLiteral("a"));
    EXPECT_EQ(result.rows[2].ssid(), QStringLiteral("m"));
}

} // namespace
