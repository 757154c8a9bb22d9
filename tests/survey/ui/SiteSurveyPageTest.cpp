#include "platform/ByteText.h"
#include "platform/store/WindowSettings.h"
#include "platform/ui/WindowTickClock.h"
#include "tests/support/StandardErrorOf.h"
#include "tests/survey/ui/SiteSurveyPageFixture.h"

#include <QAccessible>
#include <QHeaderView>
#include <QScreen>
#include <QTemporaryDir>

namespace {

using namespace std::chrono_literals;

EntryBuilder onChannel(EntryBuilder entry, std::uint32_t frequencyKhz)
{
    entry.fixedPart.Configuration.DSConfig = frequencyKhz;
    return entry;
}

EntryBuilder withSignal(EntryBuilder entry, std::int32_t dBm)
{
    entry.fixedPart.Rssi = dBm;
    return entry;
}

using Texts = std::vector<QString>;

TEST_F(SiteSurveyPageTest, ShowsARowForEachEntryOfTheList)
{
    EntryBuilder secured("home", 2);
    secured.fixedPart.Privacy = 1;
    secured.fixedPart.Rssi = -50;
    secured.fixedPart.Configuration.DSConfig = 5180000;
    secured.elements = wpaElement(2, 2);
    haveList({ EntryBuilder("cafe", 1), secured });
    page.RefreshAPList();
    EXPECT_EQ(column(u"SSID"_qs), (Texts { u"cafe"_qs, u"home"_qs }));
    EXPECT_EQ(column(u"BSSID"_qs), (Texts { u"00-11-22-33-44-01"_qs, u"00-11-22-33-44-02"_qs }));
    EXPECT_EQ(column(u"Signal"_qs), (Texts { u"63"_qs, u"100"_qs }));
    EXPECT_EQ(column(u"Channel"_qs), (Texts { u"1"_qs, u"36"_qs }));
    EXPECT_EQ(column(u"Authentication"_qs), (Texts { u"Unknown"_qs, u"WPA-PSK"_qs }));
    EXPECT_EQ(column(u"Encryption"_qs), (Texts { u"Not Used"_qs, u"TKIP"_qs }));
    EXPECT_EQ(column(u"Network Type"_qs), (Texts { u"Infrastructure"_qs, u"Infrastructure"_qs }));
    EXPECT_EQ(table->selectedRow(), -1);
}

TEST_F(SiteSurveyPageTest, TracesARefreshOnce)
{
    EXPECT_EQ(tracesOf([this] { page.RefreshAPList(); }), "#### SiteSurveyPageController - RefreshAPList ####\n");
}

TEST_F(SiteSurveyPageTest, DeselectsOnARefresh)
{
    haveList({ EntryBuilder("a", 1), EntryBuilder("b", 2) });
    page.RefreshAPList();
    table->selectRowNumber(1);
    page.RefreshAPList();
    EXPECT_EQ(table->selectedRow(), -1);
}

TEST_F(SiteSurveyPageTest, ShowsNoRowsWithoutAListOrForAnEmptyOne)
{
    page.RefreshAPList();
    EXPECT_EQ(table->numberOfRows(), 0);
    haveList({});
    page.RefreshAPList();
    EXPECT_EQ(table->numberOfRows(), 0);
    EXPECT_EQ(table->selectedRow(), -1);
}

TEST_F(SiteSurveyPageTest, ExplainsWhyTheListIsEmpty)
{
    G_bDeviceExist = 0;
    page.ClearAPList();
    EXPECT_TRUE(table->emptyText().contains(u"Looking for a wireless card"_qs));
    cardPresence = CardPresence::Absent; // the device watch found no card
    page.StopSiteSurveyTimer();
    EXPECT_TRUE(table->emptyText().contains(u"No wireless card"_qs));
    G_bDeviceExist = 1;
    G_bRadio = 0;
    page.ClearAPList();
    EXPECT_TRUE(table->emptyText().contains(u"switched off"_qs));
    G_bRadio = 1;
    page.RefreshAPList();
    EXPECT_TRUE(table->emptyText().contains(u"Searching"_qs));
    page.StartSiteSurveyTimer(); // after the first scan
    EXPECT_TRUE(table->emptyText().contains(u"No networks in range"_qs));
    EXPECT_EQ(table->accessibleDescription(), table->emptyText());
    // The device watch first clears the list and then stops the timer.
    G_bDeviceExist = 0;
    cardPresence = CardPresence::Absent;
    page.StopSiteSurveyTimer();
    EXPECT_TRUE(table->emptyText().contains(u"No wireless card"_qs));
    cardPresence = CardPresence::Silent;
    page.StopSiteSurveyTimer();
    EXPECT_TRUE(table->emptyText().contains(u"does not answer"_qs));
    EXPECT_EQ(table->accessibleDescription(), table->emptyText());
}

TEST_F(SiteSurveyPageTest, EmptyListNamesTheCardsSwitchWithoutARequest)
{
    letLinkBeDown();
    cardPresence = CardPresence::Answering;
    page.StartSiteSurveyTimer();
    cardSwitchOn = false; // as the link status page has read it
    runLoop.advance(2000ms);
    EXPECT_TRUE(table->emptyText().contains(u"own radio switch is off. Switch it on"_qs));
    EXPECT_EQ(table->accessibleDescription(), table->emptyText());
    EXPECT_EQ(registry.oids(), std::vector<std::uint32_t> { OID_GEN_MEDIA_CONNECT_STATUS });
    cardSwitchOn.reset();
}

// Takes a picture of the screen during a scan, which blocks the event loop.
class PhotographingClock final : public TickClock {
public:
    explicit PhotographingClock(QWidget& window)
        : m_window(window)
    {
    }

    void Delay(std::uint32_t /*numTicks*/) override { screen = screenOf(m_window); }
    [[nodiscard]] std::chrono::nanoseconds elapsed() const override { return {}; }

    static QImage screenOf(QWidget& window) { return window.screen()->grabWindow(window.winId()).toImage(); }

    QImage screen;

private:
    QWidget& m_window;
};

TEST_F(SiteSurveyPageTest, SearchIsOnTheScreenDuringTheFirstScanOfACard)
{
    G_bDeviceExist = 0;
    cardPresence = CardPresence::Absent;
    page.StopSiteSurveyTimer();
    show();
    QCoreApplication::processEvents();
    PhotographingClock clockOfScan(page);
    WindowTickClock windowClock(clockOfScan);
    VX7100Access scanning(registry, windowClock, alerts);
    const QImage withoutCard = PhotographingClock::screenOf(page);
    G_bDeviceExist = 1; // the device watch has found the card and initialises it
    cardPresence = CardPresence::Answering;
    scanning.RescanBssidList();
    ASSERT_FALSE(clockOfScan.screen.isNull());
    EXPECT_NE(clockOfScan.screen, withoutCard);
    EXPECT_TRUE(table->emptyText().contains(u"Searching"_qs));
    const QRect list(table->viewport()->mapTo(&page, QPoint()), table->viewport()->size());
    EXPECT_EQ(clockOfScan.screen.copy(list).convertToFormat(QImage::Format_RGB32),
        page.grab(list).toImage().convertToFormat(QImage::Format_RGB32));
}

TEST_F(SiteSurveyPageTest, KeepsButDoesNotShowTheRowsBeforeAFailedAssertion)
{
    EntryBuilder unknownChannel("odd", 2);
    unknownChannel.fixedPart.Configuration.DSConfig = 2419000;
    haveList({ EntryBuilder("a", 1), unknownChannel, EntryBuilder("c", 3) });
    page.RefreshAPList();
    ASSERT_EQ(assertions.failures.size(), 1U);
    EXPECT_EQ(assertions.failures.front().lineNumber, 978);
    EXPECT_EQ(assertions.failures.front().method, "RescanTimeFunc");
    EXPECT_EQ(page.numberOfRowsInTableView(), 1);
    EXPECT_EQ(table->numberOfRows(), 0);
    const QString inChannelView = u"a on channel"_qs;
    EXPECT_FALSE(channels->accessibleDescription().contains(inChannelView));
    page.ProbeConnectStatus(); // reloads the table
    EXPECT_EQ(table->numberOfRows(), 1);
    EXPECT_TRUE(channels->accessibleDescription().contains(inChannelView));
}

TEST_F(SiteSurveyPageTest, MarksOnlyTheConnectedRow)
{
    haveList({ EntryBuilder("a", 1), EntryBuilder("b", 2), EntryBuilder("c", 3) });
    page.RefreshAPList();
    EXPECT_EQ(markedRows(), std::vector<int> {});
    letLinkBeUp(second);
    page.ProbeConnectStatus();
    EXPECT_EQ(markedRows(), std::vector<int> { 1 });
    const auto said = [this](int row) {
        return QAccessible::queryAccessibleInterface(table)->tableInterface()->cellAt(row, 0)->text(QAccessible::Name);
    };
    EXPECT_EQ(said(1), u"Connected"_qs);
    EXPECT_EQ(said(0), QString());
    table->sortByColumn(1, Qt::DescendingOrder);
    EXPECT_EQ(markedRows(), std::vector<int> { 1 });
    table->sortByColumn(1, Qt::AscendingOrder);
    letLinkBeDown();
    letScanFind({});
    page.ProbeConnectStatus();
    EXPECT_EQ(markedRows(), std::vector<int> {});
}

TEST_F(SiteSurveyPageTest, ReadsTheMarkedRowAsASignedByte)
{
    std::vector<EntryBuilder> entries(256, EntryBuilder("n"));
    haveList(entries);
    G_bCurSelItem = static_cast<std::int8_t>(255);
    page.RefreshAPList();
    EXPECT_EQ(markedRows(), std::vector<int> {});
}

TEST_F(SiteSurveyPageTest, RunsItsTimerWhileThereIsACard)
{
    letLinkBeDown();
    EXPECT_TRUE(runLoop.activeIntervals().empty());
    page.StartSiteSurveyTimer();
    EXPECT_EQ(runLoop.activeIntervals(), std::vector<std::chrono::milliseconds> { 2000ms });
    runLoop.advance(2000ms);
    EXPECT_EQ(registry.oids(), std::vector<std::uint32_t> { OID_GEN_MEDIA_CONNECT_STATUS });
    G_bDeviceExist = 0;
    runLoop.advance(2000ms);
    EXPECT_EQ(registry.oids().size(), 1U);
    page.StopSiteSurveyTimer();
    EXPECT_TRUE(runLoop.activeIntervals().empty());
    page.StopSiteSurveyTimer();
}

TEST_F(SiteSurveyPageTest, StartingTwiceKeepsOneTimer)
{
    page.StartSiteSurveyTimer();
    page.StartSiteSurveyTimer();
    EXPECT_EQ(runLoop.activeIntervals().size(), 1U);
}

TEST_F(SiteSurveyPageTest, ScansInTheTickAfterTheRescanButton)
{
    letLinkBeDown();
    letScanFind({ EntryBuilder("found") });
    page.StartSiteSurveyTimer();
    show();
    QTest::mouseClick(rescan, Qt::LeftButton);
    EXPECT_TRUE(registry.oids().empty());
    runLoop.advance(2000ms);
    EXPECT_EQ(clock.delays, std::vector<std::uint32_t> { 120 });
    EXPECT_EQ(table->numberOfRows(), 0) << "the new list is taken up by the next tick";
    runLoop.advance(2000ms);
    EXPECT_EQ(column(u"SSID"_qs), Texts { u"found"_qs });
}

TEST_F(SiteSurveyPageTest, RescansWithF5)
{
    show();
    QTest::keyClick(&page, Qt::Key_F5);
    ASSERT_EQ(ProfileDataQueue->size(), 1U);
    EXPECT_EQ(TaskQueue::GetTaskObject()->getTaskType(), CONNECT_TASK_RESCAN);
    EXPECT_TRUE(rescan->toolTip().contains(u"F5"_qs));
}

TEST_F(SiteSurveyPageTest, OneRescanAtATimeWaitsForTheNextTick)
{
    letLinkBeDown();
    page.StartSiteSurveyTimer();
    show();
    rescan->click();
    QTest::keyClick(&page, Qt::Key_F5);
    rescan->click();
    EXPECT_EQ(ProfileDataQueue->size(), 1U);
    page.SetTaskQueue(std::make_unique<PROFILE_DATA>());
    EXPECT_EQ(ProfileDataQueue->size(), 2U) << "other tasks are queued as before";
    runLoop.advance(2000ms);
    rescan->click();
    EXPECT_EQ(ProfileDataQueue->size(), 2U) << "the first rescan has run";
}

TEST_F(SiteSurveyPageTest, ShowsAtOnceThatItIsGoingToScan)
{
    letLinkBeDown();
    letScanFind({ EntryBuilder("found") });
    page.StartSiteSurveyTimer();
    show();
    auto* const line = page.findChild<QLabel*>(u"JoinStatus"_qs);
    const int height = table->height();
    rescan->click();
    EXPECT_TRUE(line->isVisible());
    EXPECT_EQ(line->text(), u"Searching for networks…"_qs);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(line)->text(QAccessible::Name), line->text());
    QCoreApplication::processEvents();
    EXPECT_EQ(table->height(), height) << "the line has its room reserved";
    runLoop.advance(2000ms);
    EXPECT_TRUE(line->isVisible()) << "the new list is shown by the next tick";
    runLoop.advance(2000ms);
    EXPECT_EQ(table->numberOfRows(), 1);
    EXPECT_FALSE(line->isVisible());
    QCoreApplication::processEvents();
    EXPECT_EQ(table->height(), height);
}

TEST_F(SiteSurveyPageTest, RescanWithoutACardSaysWhenItStarts)
{
    G_bDeviceExist = 0;
    page.StopSiteSurveyTimer();
    show();
    rescan->click();
    EXPECT_TRUE(page.findChild<QLabel*>(u"JoinStatus"_qs)->text().contains(u"when a wireless card is ready"_qs));
}

TEST_F(SiteSurveyPageTest, QueuesATaskWithoutARecordToo)
{
    page.SetTaskQueue(nullptr);
    ASSERT_NE(TaskQueue::GetTaskObject(), nullptr);
    EXPECT_EQ(TaskQueue::GetTaskObject()->Profile(), nullptr);
}

TEST_F(SiteSurveyPageTest, QueuesAConnectionForTheNextTick)
{
    letLinkBeDown();
    auto record = std::make_unique<PROFILE_DATA>();
    record->NetworkType = Ndis802_11Infrastructure;
    page.SetTaskQueue(std::move(record));
    EXPECT_TRUE(registry.oids().empty());
    page.OnTimer();
    EXPECT_EQ(registry.oids().back(), OID_802_11_SSID | oidSetFlag);
}

TEST_F(SiteSurveyPageTest, ShowsTheConnectionText)
{
    page.UpdateConnectStatus(u"Connected <--> <b>cafe</b>"_qs);
    EXPECT_EQ(status->text(), u"Connected <--> <b>cafe</b>"_qs);
    EXPECT_EQ(status->textFormat(), Qt::PlainText);
}

TEST_F(SiteSurveyPageTest, ReplacesMalformedBytesInTheConnectionText)
{
    page.UpdateConnectStatus(u"Connected <--> "_qs + textFromBytes(QByteArrayView("caf\xE9")));
    EXPECT_EQ(status->text(), u"Connected <--> caf\uFFFD"_qs);
}

TEST_F(SiteSurveyPageTest, RefreshClearsASelectionMadeWithTheKeyboard)
{
    haveList({ EntryBuilder("a", 1), EntryBuilder("b", 2), EntryBuilder("c", 3) });
    page.RefreshAPList();
    show();
    table->setFocus();
    QTest::keyClick(table, Qt::Key_End);
    EXPECT_EQ(table->selectedRow(), 2);
    page.RefreshAPList();
    EXPECT_EQ(table->selectedRow(), -1);
    QTest::keyClick(table, Qt::Key_Down);
    EXPECT_EQ(table->selectedRow(), 0);
}

TEST_F(SiteSurveyPageTest, FirstClickOnSignalShowsTheStrongestNetworkFirst)
{
    haveList({ withSignal(EntryBuilder("weak", 1), -85), withSignal(EntryBuilder("near", 2), -50),
        withSignal(EntryBuilder("far", 3), -65) });
    page.RefreshAPList();
    show();
    QHeaderView& header = *table->horizontalHeader();
    const auto clickSignal = [&header] {
        constexpr int signalColumn = 3;
        const int x = header.sectionViewportPosition(signalColumn) + header.sectionSize(signalColumn) / 2;
        QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, QPoint(x, header.height() / 2));
    };
    clickSignal();
    EXPECT_EQ(column(u"SSID"_qs), (Texts { u"near"_qs, u"far"_qs, u"weak"_qs }));
    clickSignal();
    EXPECT_EQ(column(u"SSID"_qs), (Texts { u"weak"_qs, u"far"_qs, u"near"_qs }));
    clickSignal();
    EXPECT_EQ(column(u"SSID"_qs), (Texts { u"weak"_qs, u"near"_qs, u"far"_qs })) << "the order of the list";
}

TEST_F(SiteSurveyPageTest, RestoredSortOrderJoinsTheEntryOfTheSelectedRow)
{
    const QTemporaryDir directory;
    WindowSettings settings(directory.filePath(u"settings.plist"_qs));
    settings.setText(u"ApList/sortColumn"_qs, u"signal"_qs);
    settings.setText(u"ApList/sortDescending"_qs, u"1"_qs);
    page.keepSortOrderIn(settings);
    haveList({ withSignal(EntryBuilder("weak", 1), -85), withSignal(EntryBuilder("near", 2), -50) });
    page.RefreshAPList();
    EXPECT_EQ(column(u"SSID"_qs), (Texts { u"near"_qs, u"weak"_qs }));
    show();
    table->setFocus();
    QTest::keyClick(table, Qt::Key_Home);
    QTest::keyClick(table, Qt::Key_Return);
    ASSERT_NE(TaskQueue::GetTaskObject(), nullptr);
    EXPECT_EQ(TaskQueue::GetTaskObject()->Profile()->Bssid, second);
    page.RefreshAPList();
    EXPECT_EQ(column(u"SSID"_qs), (Texts { u"near"_qs, u"weak"_qs })) << "a new list is sorted as well";
}

TEST_F(SiteSurveyPageTest, StoresACellUnderItsKey)
{
    haveList({ EntryBuilder("a", 1) });
    page.RefreshAPList();
    page.setObjectValue(u"changed"_qs, u"ssid", 0);
    EXPECT_EQ(page.objectValueForTableColumn(u"ssid", 0).toString(), u"changed"_qs);
}

TEST_F(SiteSurveyPageTest, ToolTipShowsTheBytesOfANameThatIsNotPlain)
{
    haveList({ EntryBuilder("\xff\xfe", 1), EntryBuilder("plain", 2) });
    page.RefreshAPList();
    EXPECT_TRUE(table->model()->index(0, 1).data(Qt::ToolTipRole).toString().contains(u"ff fe"_qs));
    EXPECT_EQ(table->model()->index(1, 1).data(Qt::ToolTipRole).toString(), QString());
}

TEST_F(SiteSurveyPageTest, SwitchesBetweenListAndChannelView)
{
    show();
    table->setFocus();
    const std::size_t sent = registry.oids().size();
    EXPECT_TRUE(table->isVisible());
    EXPECT_FALSE(channels->isVisible());
    QTest::keyClick(table, Qt::Key_G, Qt::ControlModifier);
    EXPECT_TRUE(channels->isVisible());
    EXPECT_FALSE(table->isVisible());
    EXPECT_TRUE(channels->hasFocus());
    EXPECT_TRUE(showChannels->isChecked());
    EXPECT_TRUE(showChannels->toolTip().contains(u"Ctrl+G"_qs));
    EXPECT_EQ(page.findChild<QLabel*>(u"listLabel"_qs)->buddy(), channels);
    QTest::mouseClick(showChannels, Qt::LeftButton);
    EXPECT_TRUE(table->isVisible());
    EXPECT_EQ(page.findChild<QLabel*>(u"listLabel"_qs)->buddy(), table);
    EXPECT_EQ(registry.oids().size(), sent) << "the view is drawn from the list, without requests";
}

TEST_F(SiteSurveyPageTest, CheckedChannelsButtonHasACheckMark)
{
    show();
    const QSize size = showChannels->size();
    EXPECT_TRUE(showChannels->icon().isNull());
    EXPECT_EQ(size.height(), rescan->height());
    showChannels->click();
    QCoreApplication::processEvents();
    const QImage mark = showChannels->icon().pixmap(32).toImage();
    int drawn = 0;
    for (int y = 0; y < mark.height(); ++y) {
        for (int x = 0; x < mark.width(); ++x)
            drawn += qAlpha(mark.pixel(x, y)) > 128 ? 1 : 0;
    }
    EXPECT_GT(drawn, 20);
    EXPECT_EQ(showChannels->size(), size);
    showChannels->click();
    EXPECT_TRUE(showChannels->icon().isNull());
}

TEST_F(SiteSurveyPageTest, ListAndChannelViewSelectTheSameNetwork)
{
    haveList({ onChannel(EntryBuilder("a", 1), 2412000), onChannel(EntryBuilder("b", 2), 2437000) });
    page.RefreshAPList();
    table->selectRowNumber(1);
    EXPECT_EQ(channels->selectedRow(), 1);
    show();
    showChannels->click();
    channels->setFocus();
    QTest::keyClick(channels, Qt::Key_Left);
    EXPECT_EQ(table->selectedRow(), 0);
    letLinkBeUp(second);
    page.ProbeConnectStatus();
    EXPECT_EQ(channels->selectedRow(), 0) << "a probe keeps the selection";
    EXPECT_TRUE(channels->accessibleDescription().contains(u"connected"_qs, Qt::CaseInsensitive));
    page.RefreshAPList();
    EXPECT_EQ(channels->selectedRow(), -1);
    page.ClearAPList();
    EXPECT_EQ(channels->accessibleDescription(), table->emptyText());
}

TEST_F(SiteSurveyPageTest, ReturnInTheChannelViewJoinsTheSelectedNetwork)
{
    haveList({ onChannel(EntryBuilder("a", 1), 2412000), onChannel(EntryBuilder("b", 2), 2437000) });
    page.RefreshAPList();
    show();
    showChannels->click();
    channels->setFocus();
    QTest::keyClick(channels, Qt::Key_End);
    QTest::keyClick(channels, Qt::Key_Return);
    ASSERT_NE(TaskQueue::GetTaskObject(), nullptr);
    EXPECT_EQ(TaskQueue::GetTaskObject()->Profile()->Bssid, second);
}

TEST_F(SiteSurveyPageTest, TabOrderIsReadingOrder)
{
    show();
    table->setFocus();
    Texts visited;
    for (int step = 0; step < 4; ++step) {
        visited.push_back(QApplication::focusWidget()->objectName());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(visited[0], u"ApList"_qs);
    EXPECT_EQ(visited[1], u"Rescan"_qs);
    EXPECT_EQ(visited[2], u"showChannels"_qs);
}

TEST_F(SiteSurveyPageTest, CanBeMadeSmall)
{
    EXPECT_LT(page.minimumSizeHint().width(), page.fontMetrics().averageCharWidth() * 80);
    EXPECT_LT(page.minimumSizeHint().height(), page.fontMetrics().height() * 20);
}

} // namespace
