#include "tests/survey/ui/ConnectingFixture.h"

#include <algorithm>

namespace {

// Returns a copy: a field of a packed record may be unaligned.
std::uint32_t ssidLength(const PROFILE_DATA& record)
{
    return record.Ssid.SsidLength;
}

using namespace std::chrono_literals;

class ConnectingTest : public ConnectingFixture { };

TEST_F(ConnectingTest, AlertsWithoutASelectedRow)
{
    G_bRescan = 1;
    haveList({ EntryBuilder() });
    page.RefreshAPList();
    pressConnect();
    ASSERT_EQ(alerts.alerts.size(), 1u);
    EXPECT_EQ(alerts.alerts[0].title, u"No selected item"_qs);
    EXPECT_EQ(alerts.alerts[0].message, u"Please select an item to connect to."_qs);
    EXPECT_EQ(alerts.alerts[0].defaultButton, u"OK"_qs);
    EXPECT_EQ(queued(), nullptr);
    EXPECT_EQ(G_bRescan, 0); // cleared first
    EXPECT_EQ(profilePage.disabled, 0);
}

TEST_F(ConnectingTest, MissingListIsANoOpWithoutAnAlert)
{
    select(EntryBuilder());
    G_pBssidList.reset();
    pressConnect();
    EXPECT_TRUE(alerts.alerts.empty());
    EXPECT_EQ(queued(), nullptr);
}

TEST_F(ConnectingTest, StaleRowDoesNotJoinAnotherNetwork)
{
    select(EntryBuilder("shown", 1));
    haveList({ EntryBuilder("other", 2) });
    pressConnect();
    EXPECT_EQ(queued(), nullptr);
    EXPECT_TRUE(alerts.alerts.empty());
}

TEST_F(ConnectingTest, FirstRowJoinsAnOpenFirstEntryWithoutASheet)
{
    connectTo(EntryBuilder("open", 9));
    ASSERT_NE(queued(), nullptr);
    EXPECT_EQ(queued()->getTaskType(), CONNECT_TASK_FULL);
    const PROFILE_DATA& record = *queued()->Profile();
    EXPECT_EQ(record.AuthenMode, 0);
    EXPECT_EQ(record.EncryStatus, 1);
    EXPECT_EQ(record.Bssid[5], 9);
    EXPECT_EQ(record.ConnectByBssid, 1);
    EXPECT_TRUE(sheets.shown.empty());
    EXPECT_TRUE(alerts.alerts.empty());
    EXPECT_EQ(G_configFromProfile, 0);
    EXPECT_EQ(profilePage.disabled, 1);
}

TEST_F(ConnectingTest, DoubleClickJoinsTheClickedRow)
{
    haveList({ EntryBuilder("a", 1), EntryBuilder("b", 2) });
    page.RefreshAPList();
    const QPoint row = table->visualRect(table->model()->index(1, 1)).center();
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, row);
    QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, row);
    ASSERT_NE(queued(), nullptr);
    EXPECT_EQ(queued()->Profile()->Bssid[5], 2);
}

TEST_F(ConnectingTest, EnterpriseNetworkIsRefused)
{
    connectTo(wpaNetwork(ccmp, 1));
    ASSERT_EQ(alerts.alerts.size(), 1u);
    EXPECT_EQ(alerts.alerts[0].title, u"WPA-Enterprise isn't supported yet!!!"_qs);
    EXPECT_EQ(alerts.alerts[0].message, QString());
    EXPECT_EQ(queued(), nullptr);
}

TEST_F(ConnectingTest, CancelledNameSheetJoinsNoHiddenNetwork)
{
    cancelSheet();
    connectTo(EntryBuilder(""));
    EXPECT_EQ(sheets.shown, (std::vector { u"HiddenSSIDWindow"_qs }));
    EXPECT_EQ(queued(), nullptr);
}

TEST_F(ConnectingTest, HiddenOpenNetworkIsJoinedByTheTypedName)
{
    typeKey(u"HiddenSSIDText"_qs, u"attic"_qs);
    connectTo(EntryBuilder(""));
    ASSERT_NE(queued(), nullptr);
    const PROFILE_DATA& record = *queued()->Profile();
    EXPECT_EQ(record.ConnectByBssid, 0);
    EXPECT_EQ(ssidLength(record), 5u);
    EXPECT_EQ(record.Ssid.Ssid[4], 'c');
    EXPECT_EQ(record.Ssid.Ssid[5], 0);
    EXPECT_EQ(record.Bssid, MacAddress {});
}

TEST_F(ConnectingTest, HiddenWpaNetworkAsksForItsNameAndThenItsKey)
{
    EntryBuilder hidden("");
    hidden.fixedPart.Privacy = 1;
    hidden.elements = wpaElement(tkip, 2);
    typeKey(u"HiddenSSIDText"_qs, u"IEEE"_qs);
    typeKey(u"WPAPreSharedKey"_qs, u"password"_qs);
    connectTo(hidden);
    EXPECT_EQ(sheets.shown, (std::vector { u"HiddenSSIDWindow"_qs, u"WEPSettingWindow"_qs }));
    ASSERT_NE(queued(), nullptr);
    const KeyRecord& key = queued()->Profile()->pWpaKey;
    ASSERT_EQ(key.size(), 71u);
    EXPECT_EQ(key[28], std::byte { 0xf4 }); // the published key of "password" and "IEEE"
    EXPECT_EQ(key[59], std::byte { 0x2e });
}

TEST_F(ConnectingTest, WepSheetOpensWithOpenAndWep)
{
    sheets.users.emplace_back([](QDialog& sheet) {
        EXPECT_EQ(sheet.findChild<ComboBox*>(u"AuthenType"_qs)->objectValueOfSelectedItem(), u"Open"_qs);
        EXPECT_EQ(sheet.findChild<ComboBox*>(u"EncryType"_qs)->objectValueOfSelectedItem(), u"WEP"_qs);
        EXPECT_EQ(sheet.focusWidget(), sheet.findChild<QLineEdit*>(u"WEPKey1Text"_qs));
        EXPECT_FALSE(sheet.findChild<QLineEdit*>(u"WPAPreSharedKey"_qs)->isEnabled());
        QTest::keyClicks(sheet.findChild<QLineEdit*>(u"WEPKey1Text"_qs), u"0123456789"_qs);
        press(sheet, QDialogButtonBox::Ok);
    });
    connectTo(wepEntry());
    ASSERT_NE(queued(), nullptr);
    EXPECT_EQ(queued()->Profile()->EncryStatus, 0);
    EXPECT_EQ(queued()->Profile()->pWepKey[0].size(), 44u);
}

TEST_F(ConnectingTest, WpaSheetOpensWithTheCipherOfTheNetwork)
{
    for (const int cipher : { tkip, 3, ccmp }) {
        sheets.users.emplace_back([cipher](QDialog& sheet) {
            EXPECT_EQ(sheet.findChild<ComboBox*>(u"AuthenType"_qs)->objectValueOfSelectedItem(), u"WPA-PSK"_qs);
            EXPECT_EQ(sheet.findChild<ComboBox*>(u"EncryType"_qs)->objectValueOfSelectedItem(),
                cipher == tkip ? u"TKIP"_qs : u"AES"_qs);
            EXPECT_EQ(sheet.focusWidget(), sheet.findChild<QLineEdit*>(u"WPAPreSharedKey"_qs));
            press(sheet, QDialogButtonBox::Cancel);
        });
        connectTo(wpaNetwork(cipher, 2));
    }
    EXPECT_EQ(sheets.shown.size(), 3u);
    EXPECT_EQ(queued(), nullptr);
    EXPECT_EQ(profilePage.disabled, 0);
}

TEST_F(ConnectingTest, AdHocWpaNetworkOffersWpaNone)
{
    sheets.users.emplace_back([](QDialog& sheet) {
        const auto* const list = sheet.findChild<ComboBox*>(u"AuthenType"_qs);
        EXPECT_EQ(list->numberOfItems(), 3);
        EXPECT_EQ(list->itemObjectValueAtIndex(1), u"Shared"_qs);
        EXPECT_EQ(list->objectValueOfSelectedItem(), u"WPA-NONE"_qs);
        QTest::keyClicks(sheet.findChild<QLineEdit*>(u"WPAPreSharedKey"_qs), u"password"_qs);
        press(sheet, QDialogButtonBox::Ok);
    });
    connectTo(wpaNetwork(ccmp, 2, Ndis802_11IBSS));
    ASSERT_NE(queued(), nullptr);
    EXPECT_EQ(queued()->Profile()->AuthenMode, 5);
    EXPECT_EQ(queued()->Profile()->EncryStatus, 6);
    EXPECT_EQ(queued()->Profile()->ConnectByBssid, 0);
}

TEST_F(ConnectingTest, KeyFieldsAreEmptyEachTimeTheSheetOpens)
{
    typeKey(u"WPAPreSharedKey"_qs, u"password"_qs);
    connectTo(wpaNetwork(tkip, 2));
    sheets.users.emplace_back([](QDialog& sheet) {
        EXPECT_TRUE(sheet.findChild<QLineEdit*>(u"WPAPreSharedKey"_qs)->text().isEmpty());
        press(sheet, QDialogButtonBox::Cancel);
    });
    connectTo(wpaNetwork(tkip, 2));
    EXPECT_EQ(sheets.shown.size(), 2u);
}

TEST_F(ConnectingTest, KeyOf64DigitsIsReplacedByItsFirst32Characters)
{
    typeKey(u"WPAPreSharedKey"_qs, QString(64, u'3'));
    connectTo(wpaNetwork(tkip, 2));
    ASSERT_NE(queued(), nullptr);
    const KeyRecord& key = queued()->Profile()->pWpaKey;
    EXPECT_TRUE(
        std::all_of(key.begin() + 28, key.begin() + 60, [](std::byte byte) { return byte == std::byte { '3' }; }));
}

TEST_F(ConnectingTest, SecuritySheetOffersNoKeyOf64Digits)
{
    sheets.users.emplace_back([](QDialog& sheet) {
        auto* const key = sheet.findChild<QLineEdit*>(u"WPAPreSharedKey"_qs);
        EXPECT_FALSE(key->toolTip().contains(u"64"_qs));
        EXPECT_EQ(key->accessibleDescription(), u"8 to 63 characters"_qs);
        QTest::keyClicks(key, QString(64, u'3'));
        EXPECT_TRUE(key->accessibleDescription().contains(u"Add Profile"_qs));
        press(sheet, QDialogButtonBox::Cancel);
    });
    connectTo(wpaNetwork(tkip, 2));
    EXPECT_EQ(sheets.shown.size(), 1U);
}

TEST_F(ConnectingTest, RescanWhileASheetIsOpenDoesNotChangeTheJoinedNetwork)
{
    sheets.users.emplace_back([](QDialog& sheet) {
        G_pBssidList = std::make_unique<BssidListBuffer>();
        QTest::keyClicks(sheet.findChild<QLineEdit*>(u"WEPKey1Text"_qs), u"0123456789"_qs);
        press(sheet, QDialogButtonBox::Ok);
    });
    connectTo(wepEntry());
    ASSERT_NE(queued(), nullptr);
    EXPECT_EQ(queued()->Profile()->Bssid[0], 0x00);
    EXPECT_EQ(queued()->Profile()->Bssid[5], 1);
}

TEST_F(ConnectingTest, ShowsTheProgressOfAJoin)
{
    page.StartSiteSurveyTimer();
    letLinkBeDown();
    letScanFind({ EntryBuilder("open") });
    connectTo(EntryBuilder("open"));
    EXPECT_EQ(joinStatus(), u"Connecting to “open”…"_qs);
    runLoop.advance(2s);
    EXPECT_EQ(queued(), nullptr);
    EXPECT_EQ(joinStatus(), u"Connecting to “open”…"_qs);
    runLoop.advance(10s);
    EXPECT_TRUE(joinStatus().startsWith(u"No connection to “open” after 10 seconds."_qs));
    EXPECT_FALSE(joinStatus().contains(u"key"_qs)) << "an open network has none";
    letLinkBeUp({ 0x00, 0x11, 0x22, 0x33, 0x44, 0x01 });
    runLoop.advance(2s);
    EXPECT_EQ(joinStatus(), QString());
}

TEST_F(ConnectingTest, ShowsTheProgressOfAJoinQueuedAfterARescan)
{
    page.StartSiteSurveyTimer();
    letLinkBeUp({ 0x00, 0x11, 0x22, 0x33, 0x44, 0x01 });
    letScanFind({ EntryBuilder("open") });
    select(EntryBuilder("open"));
    page.OnRescan();
    pressConnect();
    runLoop.advance(4s); // the rescan, then the connection
    EXPECT_EQ(joinStatus(), u"Connecting to “open”…"_qs);
    letLinkBeDown();
    runLoop.advance(10s);
    EXPECT_TRUE(joinStatus().startsWith(u"No connection to “open”"_qs));
}

TEST_F(ConnectingTest, FailedJoinNamesTheReasonsOfItsNetwork)
{
    page.StartSiteSurveyTimer();
    letLinkBeDown();
    typeKey(u"WPAPreSharedKey"_qs, u"password"_qs);
    connectTo(wpaNetwork(tkip, 2));
    runLoop.advance(12s);
    EXPECT_TRUE(joinStatus().contains(u"key may be wrong"_qs));
    typeKey(u"HiddenSSIDText"_qs, u"attic"_qs);
    connectTo(EntryBuilder(""));
    runLoop.advance(12s);
    EXPECT_TRUE(joinStatus().contains(u"name may be wrong"_qs));
}

TEST_F(ConnectingTest, JoinWithoutACardIsQueuedWithoutProgress)
{
    sheets.users.emplace_back([this](QDialog& sheet) {
        G_bDeviceExist = 0;
        page.StopSiteSurveyTimer();
        QTest::keyClicks(sheet.findChild<QLineEdit*>(u"WEPKey1Text"_qs), u"0123456789"_qs);
        press(sheet, QDialogButtonBox::Ok);
    });
    connectTo(wepEntry());
    EXPECT_NE(queued(), nullptr);
    EXPECT_EQ(joinStatus(), QString());
}

TEST_F(ConnectingTest, HiddenNameIsSelectedEachTimeTheSheetOpens)
{
    typeKey(u"HiddenSSIDText"_qs, u"attic"_qs);
    connectTo(EntryBuilder(""));
    sheets.users.emplace_back([](QDialog& sheet) {
        auto* const line = sheet.findChild<QLineEdit*>(u"HiddenSSIDText"_qs);
        EXPECT_EQ(sheet.focusWidget(), line);
        QTest::keyClicks(sheet.focusWidget(), u"cellar"_qs);
        EXPECT_EQ(line->text(), u"cellar"_qs);
        press(sheet, QDialogButtonBox::Cancel);
    });
    connectTo(EntryBuilder(""));
    EXPECT_EQ(sheets.shown.size(), 2u);
}

TEST_F(ConnectingTest, InvalidListsAreHandledSafely)
{
    EntryBuilder lying = wpaNetwork(tkip, 2);
    lying.keepLengths = true;
    lying.fixedPart.Length = 150;
    lying.fixedPart.IELength = 0xFFFFFFFF;
    lying.fixedPart.Ssid.SsidLength = 0xFFFFFFFF;
    typeKey(u"WPAPreSharedKey"_qs, u"password"_qs);
    connectTo(lying);
    ASSERT_NE(queued(), nullptr);
    EXPECT_EQ(queued()->Profile()->pWpaKey.size(), 71u);
}

} // namespace
