#include "app/shared/CardPresence.h"
#include "tests/monitor/ui/LinkStatusPageFixture.h"

#include <QCheckBox>

#include <limits>

namespace {

const Requests connectedTick { query(OID_GEN_MEDIA_CONNECT_STATUS, 4), query(OID_802_11_SSID, 36),
    query(OID_802_11_BSSID, 6), query(OID_802_11_CONFIGURATION, 32), query(VX_OID_802_11_STA_CONFIG, 32),
    query(VX_OID_802_11_LINK_COUNTERS, 16), query(OID_802_11_RSSI, 4) };
const Requests mediaStateQuery { query(OID_GEN_MEDIA_CONNECT_STATUS, 4) };
const Requests radioStateQueries { query(OID_GEN_MEDIA_CONNECT_STATUS, 4), query(VX_OID_802_11_STA_CONFIG, 32) };

const QString connectedText = QStringLiteral("Connected <--> home <--> 00-11-22-33-44-AB");

struct AwakeLinkStatusPageTest : LinkStatusPageTest {
    AwakeLinkStatusPageTest() { awake(); }
};

TEST_F(LinkStatusPageTest, AwakeningQueriesTheCountsAndStartsATimerOfTwoSeconds)
{
    page.awakeFromNib();
    EXPECT_EQ(card.takeRequests(), Requests { query(VX_OID_802_11_LINK_COUNTERS, 16) });
    EXPECT_EQ(card.runLoop.activeIntervals(), std::vector { monitorInterval });
    EXPECT_EQ(text(u"Status"), QString());
    EXPECT_TRUE(siteSurvey.texts.isEmpty());
}

TEST_F(LinkStatusPageTest, AwakeningMakesTheLevelIndicatorsDeterminate)
{
    for (const char16_t* const name : { u"LinkQualityState", u"SignalStrengthState" }) {
        level(name).setRange(0, 0);
        page.awakeFromNib();
        EXPECT_EQ(level(name).minimum(), 0);
        EXPECT_EQ(level(name).maximum(), 100);
    }
}

TEST_F(LinkStatusPageTest, ThroughputsStartFromTheCountsAtAwakening)
{
    setCounters({ 108, 80, 1000000, 2000000 });
    awake();
    setCounters({ 108, 80, 1001999, 2000250 });
    tick();
    EXPECT_EQ(text(u"ThroughputTx"), u"7.0");
    EXPECT_EQ(text(u"ThroughputRx"), u"1.0");
}

TEST_F(LinkStatusPageTest, ThroughputsStartFromZeroWithoutACardAtAwakening)
{
    card.registry.serviceCount = 0;
    awake();
    card.registry.serviceCount = 1;
    setCounters({ 108, 80, 2500, 5000 });
    tick();
    EXPECT_EQ(text(u"ThroughputTx"), u"10.0");
    EXPECT_EQ(text(u"ThroughputRx"), u"20.0");
}

TEST_F(LinkStatusPageTest, ThroughputsSurviveCounterWraparound)
{
    constexpr auto maximum = std::numeric_limits<std::uint32_t>::max();
    setCounters({ 108, 80, maximum - 499, maximum });
    awake();
    setCounters({ 108, 80, 500, 1999 });
    tick();
    EXPECT_EQ(text(u"ThroughputTx"), u"4.0");
    EXPECT_EQ(text(u"ThroughputRx"), u"8.0");
    EXPECT_EQ(plotted().at(0)->transmitKbps, 4U);
}

TEST_F(LinkStatusPageTest, PlotOmitsTheJumpOfAResetCounter)
{
    setCounters({ 108, 59, 5000, 5000 });
    awake();
    setCounters({ 108, 59, 0, 5250 });
    tick();
    EXPECT_EQ(text(u"ThroughputTx"), u"17179849.0");
    EXPECT_EQ(plotted().at(0)->transmitKbps, std::nullopt);
    EXPECT_EQ(plotted().at(0)->receiveKbps, 1U);
}

TEST_F(AwakeLinkStatusPageTest, ConnectedTickSendsSevenQueriesInOrder)
{
    EXPECT_EQ(requestsOfTick(), connectedTick);
}

TEST_F(AwakeLinkStatusPageTest, ConnectedTickShowsAllFigures)
{
    setCounters({ 11, 25, 2000, 3000 });
    tick();
    EXPECT_EQ(text(u"Status"), connectedText);
    EXPECT_EQ(figures(),
        (QStringList {
            u"6 <--> 2437000 KHz"_qs, u"5.5 Mbps"_qs, u"8.0"_qs, u"12.0"_qs, u"WEAK 40%"_qs, u"NORMAL 63%"_qs }));
    EXPECT_EQ(levels(), std::pair(40, 63));
    EXPECT_EQ(siteSurvey.texts, QStringList(connectedText));
}

TEST_F(AwakeLinkStatusPageTest, SmoothsFiguresOverTicks)
{
    setCounters({ 108, 59, 0, 0 }); // 80 percent
    setRssi(-50); // 100 percent
    tick();
    EXPECT_EQ(text(u"LinkQuality"), u"GOOD 80%");
    EXPECT_EQ(text(u"SignalStrength"), u"GOOD 100%");
    setCounters({ 108, 42, 0, 0 }); // 60 percent
    setRssi(-91); // 0 percent
    tick();
    EXPECT_EQ(text(u"LinkQuality"), u"NORMAL 70%");
    EXPECT_EQ(text(u"SignalStrength"), u"NORMAL 50%");
    EXPECT_EQ(levels(), std::pair(70, 50));
}

TEST_F(AwakeLinkStatusPageTest, ContinuesSmoothingAfterALostLink)
{
    setCounters({ 108, 59, 0, 0 });
    tick();
    setMediaState(NdisMediaStateDisconnected);
    tick();
    setMediaState(NdisMediaStateConnected);
    setCounters({ 108, 42, 0, 0 });
    tick();
    EXPECT_EQ(text(u"LinkQuality"), u"NORMAL 70%");
}

TEST_F(AwakeLinkStatusPageTest, DoesNotAverageASignalOfZero)
{
    setRssi(-95);
    tick();
    EXPECT_EQ(text(u"SignalStrength"), u"WEAK 0%");
    setRssi(-50);
    tick();
    EXPECT_EQ(text(u"SignalStrength"), u"GOOD 100%");
}

TEST_F(AwakeLinkStatusPageTest, CheckBoxShowsRawPowerFromTheNextTick)
{
    auto* const dBm = page.findChild<QCheckBox*>(QStringLiteral("dBm"));
    ASSERT_NE(dBm, nullptr);
    tick();
    dBm->click();
    EXPECT_EQ(text(u"SignalStrength"), u"NORMAL 63%");
    setRssi(-60);
    tick();
    EXPECT_EQ(text(u"SignalStrength"), u"NORMAL -60 dBm");
    EXPECT_EQ(levels().second, 69); // (63 + 76) / 2
    dBm->click();
    tick();
    EXPECT_EQ(text(u"SignalStrength"), u"GOOD 72%");
}

TEST_F(AwakeLinkStatusPageTest, ShowsNamesOf32AndOf0Bytes)
{
    setNetworkName("abcdefghijklmnopqrstuvwxyz012345");
    tick();
    EXPECT_EQ(text(u"Status"), u"Connected <--> abcdefghijklmnopqrstuvwxyz012345 <--> 00-11-22-33-44-AB");
    setNetworkName("");
    tick();
    EXPECT_EQ(text(u"Status"), u"Connected <-->  <--> 00-11-22-33-44-AB");
}

TEST_F(AwakeLinkStatusPageTest, ShowsReplacementCharactersForInvalidUtf8)
{
    setNetworkName("caf\xe9");
    tick();
    EXPECT_EQ(text(u"Status"), u"Connected <--> caf\uFFFD <--> 00-11-22-33-44-AB");
    const QString name = QStringLiteral("caf") + QChar(0xEF00 + 0xE9); // the byte is preserved
    EXPECT_EQ(siteSurvey.texts.last(), QStringLiteral("Connected <--> %1 <--> 00-11-22-33-44-AB").arg(name));
}

TEST_F(AwakeLinkStatusPageTest, DoesNotInterpretANameAsMarkup)
{
    setNetworkName("<b>A&B</b>");
    tick();
    EXPECT_EQ(page.findChild<QLabel*>(QStringLiteral("Status"))->textFormat(), Qt::PlainText);
    EXPECT_EQ(text(u"Status"), u"Connected <--> <b>A&B</b> <--> 00-11-22-33-44-AB");
}

TEST_F(AwakeLinkStatusPageTest, ReadsFailedQueriesAsZeros)
{
    for (const std::uint32_t oid :
        { OID_802_11_SSID, OID_802_11_BSSID, VX_OID_802_11_STA_CONFIG, VX_OID_802_11_LINK_COUNTERS, OID_802_11_RSSI })
        card.registry.fail(oid);
    EXPECT_EQ(requestsOfTick(), connectedTick);
    EXPECT_EQ(text(u"Status"), u"Connected <-->  <--> 00-00-00-00-00-00");
    EXPECT_EQ(text(u"CurrentTxRate"), u"0 Mbps");
    EXPECT_EQ(text(u"LinkQuality"), u"WEAK 10%");
    EXPECT_EQ(text(u"SignalStrength"), u"GOOD 100%"); // 0 dBm
}

TEST_F(AwakeLinkStatusPageTest, SendsNoRequestsWithoutADevice)
{
    tick();
    card.registry.forgetCalls();
    G_bDeviceExist = 0;
    tick();
    EXPECT_TRUE(card.registry.calls.empty());
    expectNoLink(u"No Device!!");
    EXPECT_EQ(siteSurvey.texts.size(), 2);
}

TEST_F(AwakeLinkStatusPageTest, TreatsACardThatDoesNotRespondAsNoDevice)
{
    tick();
    card.registry.fail(OID_GEN_MEDIA_CONNECT_STATUS);
    EXPECT_EQ(requestsOfTick(), mediaStateQuery);
    expectNoLink(u"No Device!!");
}

TEST_F(AwakeLinkStatusPageTest, DoesNotChangeTheProfileFlagsWithoutADevice)
{
    G_configFromProfile = 1;
    G_bCheckedProfileConnect = 1;
    G_bDeviceExist = 0;
    tick();
    EXPECT_EQ(G_bCheckedProfileConnect, 1);
    EXPECT_EQ(G_configFromProfile, 1);
}

TEST_F(AwakeLinkStatusPageTest, ShowsDisconnectedWhileTheHardwareRadioIsOn)
{
    tick();
    setMediaState(NdisMediaStateDisconnected);
    EXPECT_EQ(requestsOfTick(), radioStateQueries);
    expectNoLink(u"Disconnected");
}

TEST_F(AwakeLinkStatusPageTest, ShowsTheRadioOffIfTheHardwareRadioIsOff)
{
    setMediaState(NdisMediaStateDisconnected);
    setHardwareRadio(0);
    EXPECT_EQ(requestsOfTick(), radioStateQueries);
    expectNoLink(u"Radio Status <--> OFF");
}

TEST_F(AwakeLinkStatusPageTest, PassesOnWhetherTheCardsSwitchIsOn)
{
    tick();
    EXPECT_EQ(cardSwitchOn, true) << "while connected";
    setMediaState(NdisMediaStateDisconnected);
    setHardwareRadio(0);
    tick();
    EXPECT_EQ(cardSwitchOn, false);
    setHardwareRadio(1);
    tick();
    EXPECT_EQ(cardSwitchOn, true);
    card.registry.fail(VX_OID_802_11_STA_CONFIG);
    tick();
    EXPECT_EQ(cardSwitchOn, true) << "a failed query says nothing";
    G_bDeviceExist = 0;
    tick();
    EXPECT_EQ(cardSwitchOn, std::nullopt);
}

TEST_F(AwakeLinkStatusPageTest, DoesNotQueryTheHardwareRadioIfTheRadioIsSwitchedOff)
{
    setMediaState(NdisMediaStateDisconnected);
    G_bRadio = 0;
    EXPECT_EQ(requestsOfTick(), mediaStateQuery);
    expectNoLink(u"Radio Status <--> OFF");
    EXPECT_EQ(siteSurvey.texts.size(), 1);
}

TEST_F(AwakeLinkStatusPageTest, TreatsUnknownMediaStatesAsDisconnected)
{
    setMediaState(7);
    tick();
    EXPECT_EQ(text(u"Status"), u"Disconnected");
}

TEST_F(AwakeLinkStatusPageTest, LostLinkClearsTheProfileCheckMarkOnlyForAProfileConnection)
{
    setMediaState(NdisMediaStateDisconnected);
    G_bCheckedProfileConnect = 1;
    tick();
    EXPECT_EQ(G_bCheckedProfileConnect, 1);
    G_configFromProfile = 1;
    tick();
    EXPECT_EQ(G_bCheckedProfileConnect, 0);
    EXPECT_EQ(G_configFromProfile, 1);
}

TEST_F(AwakeLinkStatusPageTest, ConnectedTickSetsTheProfileCheckMarkForAProfileConnection)
{
    G_configFromProfile = 1;
    tick();
    EXPECT_EQ(G_bCheckedProfileConnect, 1);
    G_configFromProfile = 0;
    tick();
    EXPECT_EQ(G_bCheckedProfileConnect, 0);
}

TEST_F(AwakeLinkStatusPageTest, UnknownFrequencyEndsTheTickIfTheHandlerStops)
{
    tick();
    siteSurvey.texts.clear();
    setFrequency(2419000);
    setCounters({ 2, 10, 250000, 250000 });
    setNetworkName("other");
    G_configFromProfile = 1;
    EXPECT_EQ(requestsOfTick(), Requests(connectedTick.begin(), connectedTick.begin() + 4));
    EXPECT_EQ(card.assertions.failures,
        (std::vector<RecordingAssertionHandler::Failure> { { "OnTimer", "LinkStatusPageController",
            "LinkStatusPageController", 169, "Invalid parameter not satisfying: FALSE" } }));
    EXPECT_EQ(text(u"CurrentChannel"), u"6 <--> 2437000 KHz"); // unchanged
    EXPECT_EQ(text(u"CurrentTxRate"), u"54 Mbps");
    EXPECT_TRUE(siteSurvey.texts.isEmpty());
    EXPECT_EQ(G_bCheckedProfileConnect, 0);
    EXPECT_EQ(plotted().at(0), std::nullopt);
}

TEST_F(AwakeLinkStatusPageTest, UnknownFrequencyIsShownAsTheFirstChannelIfTheHandlerContinues)
{
    card.assertions.goOn = true;
    setFrequency(2419000);
    EXPECT_EQ(requestsOfTick(), connectedTick);
    EXPECT_EQ(card.assertions.failures.size(), 1U);
    EXPECT_EQ(text(u"CurrentChannel"), u"1 <--> 2419000 KHz");
    EXPECT_EQ(text(u"CurrentTxRate"), u"54 Mbps");
    EXPECT_EQ(siteSurvey.texts, QStringList(connectedText));
}

TEST_F(AwakeLinkStatusPageTest, FailedConfigurationQueryIsAnUnknownFrequency)
{
    card.registry.fail(OID_802_11_CONFIGURATION);
    tick();
    EXPECT_EQ(card.assertions.failures.size(), 1U);
}

TEST_F(LinkStatusPageTest, WorksWithoutASiteSurveyPage)
{
    LinkStatusPageController single(card.adapter, card.runLoop, card.assertions, nullptr);
    single.awakeFromNib();
    const auto& status = *single.findChild<QLabel*>(QStringLiteral("Status"));
    tick();
    EXPECT_EQ(status.text(), connectedText);
    G_bDeviceExist = 0;
    tick();
    EXPECT_EQ(status.text(), u"No Device!!");
}

TEST_F(AwakeLinkStatusPageTest, PlotGetsTheFiguresOfEachTickAndGapsWithoutALink)
{
    setCounters({ 108, 59, 2000, 3000 });
    tick();
    EXPECT_EQ(plotted().at(0), (LinkSample { 80, 63, 8, 12 }));
    setMediaState(NdisMediaStateDisconnected);
    tick();
    G_bDeviceExist = 0;
    tick();
    EXPECT_EQ(plotted().size(), 3U);
    EXPECT_EQ(plotted().at(0), std::nullopt);
    EXPECT_EQ(plotted().at(1), std::nullopt);
    const auto& plot = *page.findChild<LinkPlot*>();
    EXPECT_EQ(plot.accessibleDescription(), u"Not connected.");
    EXPECT_EQ(plot.accessibleName(), u"Link over the last five minutes");
}

TEST_F(AwakeLinkStatusPageTest, PlotOmitsAThroughputThatCoversMoreThanOneTick)
{
    tick();
    setMediaState(NdisMediaStateDisconnected);
    tick();
    setMediaState(NdisMediaStateConnected);
    setCounters({ 108, 59, 25000, 50000 });
    tick();
    EXPECT_EQ(text(u"ThroughputTx"), u"100.0");
    EXPECT_EQ(plotted().at(0)->transmitKbps, std::nullopt);
    EXPECT_EQ(plotted().at(0)->receiveKbps, std::nullopt);
    setCounters({ 108, 59, 25250, 50500 });
    tick();
    EXPECT_EQ(plotted().at(0)->transmitKbps, 1U);
    EXPECT_EQ(plotted().at(0)->receiveKbps, 2U);
}

} // namespace
