// Connecting after link loss, during a rescan, and from invalid lists.

#include "tests/support/RecordedRequests.h"
#include "tests/support/StandardErrorOf.h"
#include "tests/survey/ui/ConnectingFixture.h"

#include <QRegularExpression>

namespace {

using namespace std::chrono_literals;
using Oids = std::vector<std::uint32_t>;

class ConnectingEdgesTest : public ConnectingFixture {
protected:
    static void haveList(std::uint32_t count, const std::vector<EntryBuilder>& entries)
    {
        std::vector<Bytes> all;
        for (const EntryBuilder& entry : entries)
            all.push_back(entry.bytes());
        plantBssidList(bssidList(count, all));
    }

    // The new list is not shown yet.
    void connectToRow(int row, std::uint32_t count, const std::vector<EntryBuilder>& entries)
    {
        SurveyFixture::haveList({ EntryBuilder("a", 1), EntryBuilder("b", 2) });
        page.RefreshAPList();
        table->selectRowNumber(row);
        haveList(count, entries);
        pressConnect();
    }

    void expectNothingHappened() const
    {
        EXPECT_EQ(queued(), nullptr);
        EXPECT_TRUE(alerts.alerts.empty());
        EXPECT_TRUE(sheets.shown.empty());
        EXPECT_EQ(profilePage.disabled, 0);
        EXPECT_EQ(G_configFromProfile, 1);
    }

    [[nodiscard]] int scans() const { return static_cast<int>(registry.inputsOf(scanOids().front()).size()); }
};

EntryBuilder withLength(EntryBuilder entry, std::uint32_t length)
{
    entry.keepLengths = true;
    entry.fixedPart.Length = length;
    return entry;
}

TEST_F(ConnectingEdgesTest, ScansAtEveryTickAfterLinkLossUntilTheUserConnects)
{
    letScanFind({ EntryBuilder("open") });
    letLinkBeUp({ 0x00, 0x11, 0x22, 0x33, 0x44, 0x01 });
    select(EntryBuilder("open"));
    page.StartSiteSurveyTimer();
    runLoop.advance(2s);
    EXPECT_EQ(scans(), 0);
    letLinkBeDown();
    for (int tick = 1; tick <= 3; ++tick) {
        runLoop.advance(2s);
        EXPECT_EQ(scans(), tick);
    }
    table->selectRowNumber(0);
    pressConnect();
    registry.forgetCalls();
    runLoop.advance(2s);
    EXPECT_EQ(registry.oids().front(), std::uint32_t { OID_GEN_MEDIA_CONNECT_STATUS });
    EXPECT_EQ(registry.oids().back(), asSet(OID_802_11_BSSID));
    registry.forgetCalls();
    runLoop.advance(6s);
    EXPECT_EQ(registry.oids(), Oids(3, OID_GEN_MEDIA_CONNECT_STATUS)); // no more scans
}

TEST_F(ConnectingEdgesTest, ListThatArrivesWhileASheetIsOpenDoesNotChangeTheJoin)
{
    sheets.users.emplace_back([](QDialog& sheet) {
        EXPECT_EQ(G_bRescan, 0);
        G_bRescan = 1;
        QTest::keyClicks(sheet.findChild<QLineEdit*>(u"WEPKey1Text"_qs), u"0123456789"_qs);
        press(sheet, QDialogButtonBox::Ok);
    });
    G_bRescan = 1;
    connectTo(wepEntry());
    ASSERT_NE(queued(), nullptr);
    EXPECT_EQ(G_bRescan, 0);
}

TEST_F(ConnectingEdgesTest, ListThatArrivesDuringACancelledSheetIsKept)
{
    sheets.users.emplace_back([](QDialog& sheet) {
        G_bRescan = 1;
        press(sheet, QDialogButtonBox::Cancel);
    });
    connectTo(wepEntry());
    EXPECT_EQ(queued(), nullptr);
    EXPECT_EQ(G_bRescan, 1);
}

TEST_F(ConnectingEdgesTest, PageActionsAreDisabledWhileASheetIsOpen)
{
    const auto buttons = page.findChildren<QPushButton*>(QRegularExpression(u"^(Connect|AddProfile|Rescan)$"_qs));
    ASSERT_EQ(buttons.size(), 3);
    sheets.users.emplace_back([this, buttons](QDialog& sheet) {
        for (const QPushButton* const button : buttons)
            EXPECT_FALSE(button->isEnabled()) << button->objectName().toStdString();
        page.OnConnect(); // as from a double click that assistive technology sends
        page.OnAddProfile();
        page.OnRescan();
        EXPECT_EQ(queued(), nullptr);
        press(sheet, QDialogButtonBox::Cancel);
    });
    select(wepEntry());
    auto* const connectButton = page.findChild<QPushButton*>(u"Connect"_qs);
    connectButton->setFocus();
    pressConnect();
    EXPECT_EQ(sheets.shown.size(), 1U);
    EXPECT_EQ(queued(), nullptr);
    EXPECT_TRUE(connectButton->isEnabled());
    EXPECT_EQ(page.focusWidget(), connectButton);
}

TEST_F(ConnectingEdgesTest, SheetThatCouldNotRunIsACancel)
{
    constexpr int refused = -1; // QDialog::exec() on a sheet that is running already
    for (const EntryBuilder& entry : { wepEntry(), EntryBuilder("") }) {
        sheets.users.emplace_back([this](QDialog& /*sheet*/) { sheets.stopModalWithCode(refused); });
        connectTo(entry);
        EXPECT_EQ(queued(), nullptr);
    }
    EXPECT_EQ(sheets.shown.size(), 2U);
}

TEST_F(ConnectingEdgesTest, EnterpriseAlertHasOnlyAnOkButton)
{
    connectTo(wpaNetwork(ccmp, 1));
    using Alert = RecordingAlertPanels::Alert;
    EXPECT_EQ(
        alerts.alerts, (std::vector<Alert> { { u"WPA-Enterprise isn't supported yet!!!"_qs, QString(), u"OK"_qs } }));
}

TEST_F(ConnectingEdgesTest, HiddenEnterpriseNetworkIsRefusedBeforeTheNameSheet)
{
    EntryBuilder hidden = wpaNetwork(ccmp, 1);
    hidden.fixedPart.Ssid = {};
    connectTo(hidden);
    ASSERT_EQ(alerts.alerts.size(), 1U);
    EXPECT_EQ(alerts.alerts[0].title, u"WPA-Enterprise isn't supported yet!!!"_qs);
    EXPECT_TRUE(sheets.shown.empty());
    EXPECT_EQ(queued(), nullptr);
    EXPECT_EQ(G_configFromProfile, 1);
}

TEST_F(ConnectingEdgesTest, RowBeyondTheEndOfTheListIsANoOp)
{
    connectToRow(1, 1, { EntryBuilder("a", 1) });
    expectNothingHappened();
}

TEST_F(ConnectingEdgesTest, RowOfAListWithCountZeroIsANoOp)
{
    connectToRow(0, 0, { EntryBuilder("a", 1) });
    expectNothingHappened();
}

TEST_F(ConnectingEdgesTest, RowBeyondTheEntriesIsANoOpWithTheMaximumCount)
{
    connectToRow(1, 0xFFFFFFFF, { EntryBuilder("a", 1) });
    expectNothingHappened();
}

TEST_F(ConnectingEdgesTest, NetworkThatMovedInTheListIsJoined)
{
    connectToRow(0, 3, { EntryBuilder("c", 3), EntryBuilder("b", 2), EntryBuilder("a", 1) });
    ASSERT_NE(queued(), nullptr);
    EXPECT_EQ(queued()->Profile()->Bssid[5], 1);
    EXPECT_EQ(table->numberOfRows(), 3) << "the new list is shown";
    EXPECT_EQ(table->selectedRow(), 2);
}

TEST_F(ConnectingEdgesTest, NetworkThatLeftTheListIsReportedAndTheNewListShown)
{
    connectToRow(1, 2, { EntryBuilder("a", 1), EntryBuilder("c", 3) });
    expectNothingHappened();
    EXPECT_EQ(joinStatus(), u"“b” is no longer in range. The list is now up to date."_qs);
    EXPECT_EQ(table->model()->index(1, 1).data().toString(), u"c"_qs);
    EXPECT_EQ(table->selectedRow(), -1);
    table->selectRowNumber(1);
    pressConnect();
    ASSERT_NE(queued(), nullptr);
    EXPECT_EQ(queued()->Profile()->Bssid[5], 3);
    EXPECT_FALSE(joinStatus().contains(u"no longer"_qs));
}

TEST_F(ConnectingEdgesTest, RowIsJoinedWithTheMaximumCount)
{
    connectToRow(1, 0xFFFFFFFF, { EntryBuilder("a", 1), EntryBuilder("b", 2) });
    ASSERT_NE(queued(), nullptr);
    EXPECT_EQ(queued()->Profile()->Bssid[5], 2);
}

TEST_F(ConnectingEdgesTest, RowAtOrAfterAZeroLengthIsANoOp)
{
    for (const int row : { 0, 1 })
        connectToRow(row, 2, { withLength(EntryBuilder("a", 1), 0), EntryBuilder("b", 2) });
    expectNothingHappened();
}

TEST_F(ConnectingEdgesTest, RowAtOrAfterALengthBeyondTheBufferIsANoOp)
{
    for (const std::uint32_t length : { 65536U, 0x7FFFFFFFU, 0xFFFFFFFFU }) {
        for (const int row : { 0, 1 })
            connectToRow(row, 2, { withLength(EntryBuilder("a", 1), length), EntryBuilder("b", 2) });
    }
    expectNothingHappened();
}

TEST_F(ConnectingEdgesTest, TooLargeElementsLengthFindsNoWpaElement)
{
    EntryBuilder lying("a", 1);
    lying.keepLengths = true;
    lying.fixedPart.Length = sizeof(WLAN_BSSID_EX);
    lying.fixedPart.IELength = 0xFFFFFFFF;
    connectToRow(0, 1, { lying });
    ASSERT_NE(queued(), nullptr);
    EXPECT_EQ(queued()->Profile()->AuthenMode, 0);
    EXPECT_EQ(queued()->Profile()->EncryStatus, 1);
}

TEST_F(ConnectingEdgesTest, OnConnectIsTracedWithTheDebugFlag)
{
    const auto connect = [this] { pressConnect(); };
    EXPECT_EQ(standardErrorOf(connect), "");
    // Without a row, IsItemWPA is not traced.
    EXPECT_EQ(tracesOf(connect), "#### SiteSurveyPageController - OnConnect ####\n");
    select(EntryBuilder());
    EXPECT_EQ(tracesOf(connect).rfind("#### SiteSurveyPageController - OnConnect ####\n"
                                      "#### SiteSurveyPageController - IsItemWPA ####\n",
                  0),
        0U);
}

} // namespace
