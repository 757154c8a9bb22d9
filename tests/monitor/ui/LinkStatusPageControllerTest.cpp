#include "monitor/ui/LinkStatusPageController.h"

#include "driver/records/NdisRecords.h"
#include "driver/records/Oids.h"
#include "driver/records/VxRecords.h"
#include "monitor/ui/LevelIndicator.h"
#include "monitor/ui/LinkPlot.h"
#include "tests/monitor/ui/MonitorDoubles.h"

#include <QCheckBox>
#include <QLabel>
#include <QTest>
#include <gtest/gtest.h>

#include <limits>

namespace {

using Oids = std::vector<std::uint32_t>;

const Oids connectedTick { OID_GEN_MEDIA_CONNECT_STATUS, OID_802_11_SSID, OID_802_11_BSSID, OID_802_11_CONFIGURATION,
    VX_OID_802_11_STA_CONFIG, VX_OID_802_11_LINK_COUNTERS, OID_802_11_RSSI };

const QString connectedText = QStringLiteral("Connected <--> home <--> 00-11-22-33-44-AB");

struct LinkStatusPageTest : testing::Test {
    MonitoredCard card;
    NotingSiteSurveyPage siteSurvey;
    LinkStatusPageController page { card.adapter, card.runLoop, card.assertions, &siteSurvey };

    LinkStatusPageTest()
    {
        setNetworkName("home");
        card.answer(OID_802_11_BSSID, MacAddress { 0x00, 0x11, 0x22, 0x33, 0x44, 0xab });
        setFrequency(2437000);
        setCounters({ 108, 80, 0, 0 });
        setRssi(-65);
        setMediaState(NdisMediaStateConnected);
        setHardwareRadio(1);
    }

    void setMediaState(std::uint32_t state) { card.answer(OID_GEN_MEDIA_CONNECT_STATUS, state); }
    void setRssi(std::int32_t dBm) { card.answer(OID_802_11_RSSI, dBm); }
    void setCounters(const VX_802_11_LINK_COUNTERS& counters) { card.answer(VX_OID_802_11_LINK_COUNTERS, counters); }
    void setNetworkName(std::string_view name)
    {
        NDIS_802_11_SSID ssid {};
        ssid.SsidLength = static_cast<std::uint32_t>(name.size());
        std::copy(name.begin(), name.end(), ssid.Ssid.begin());
        card.answer(OID_802_11_SSID, ssid);
    }
    void setFrequency(std::uint32_t frequencyKhz)
    {
        NDIS_802_11_CONFIGURATION configuration {};
        configuration.DSConfig = frequencyKhz;
        card.answer(OID_802_11_CONFIGURATION, configuration);
    }
    void setHardwareRadio(std::uint32_t status)
    {
        VX_802_11_STA_CONFIG configuration {};
        configuration.HwRadioStatus = status;
        card.answer(VX_OID_802_11_STA_CONFIG, configuration);
    }

    // Wakes the page and forgets the request that it makes for that.
    void awake()
    {
        page.awakeFromNib();
        card.registry.forgetCalls();
    }
    void tick() { card.tick(); }

    [[nodiscard]] QString text(QStringView name) const
    {
        const auto* const label = page.findChild<QLabel*>(name.toString());
        return label != nullptr ? label->text() : QStringLiteral("(no such label)");
    }
    [[nodiscard]] LevelIndicator& level(QStringView name) const
    {
        return *page.findChild<LevelIndicator*>(name.toString());
    }
    [[nodiscard]] LinkPlot& plot() const { return *page.findChild<LinkPlot*>(); }

    void expectNoFigures() const
    {
        for (const char16_t* const name : { u"CurrentChannel", u"CurrentTxRate", u"LinkQuality", u"SignalStrength",
                 u"ThroughputRx", u"ThroughputTx" })
            EXPECT_EQ(text(name), QString()) << qPrintable(QStringView(name).toString());
        EXPECT_EQ(level(u"LinkQualityState").value(), 0);
        EXPECT_EQ(level(u"SignalStrengthState").value(), 0);
    }
};

TEST_F(LinkStatusPageTest, AwakeningAsksForTheCountsOnceAndStartsATimerOfTwoSeconds)
{
    page.awakeFromNib();
    EXPECT_EQ(card.takeRequests(), (Requests { query(0x0D710102, 16) }));
    EXPECT_EQ(card.runLoop.activeIntervals(), std::vector { monitorInterval });
    EXPECT_EQ(text(u"Status"), QString());
    EXPECT_TRUE(siteSurvey.texts.isEmpty());
}

TEST_F(LinkStatusPageTest, AwakeningMakesTheLevelIndicatorsDeterminate)
{
    level(u"LinkQualityState").setRange(0, 0);
    level(u"SignalStrengthState").setRange(0, 0);
    page.awakeFromNib();
    for (const char16_t* const name : { u"LinkQualityState", u"SignalStrengthState" }) {
        EXPECT_EQ(level(name).minimum(), 0);
        EXPECT_EQ(level(name).maximum(), 100);
    }
}

TEST_F(LinkStatusPageTest, TheThroughputsStartFromTheCountsAtAwakening)
{
    setCounters({ 108, 80, 1000000, 2000000 });
    awake();
    setCounters({ 108, 80, 1001999, 2000250 });
    tick();
    EXPECT_EQ(text(u"ThroughputTx"), u"7.0");
    EXPECT_EQ(text(u"ThroughputRx"), u"1.0");
}

TEST_F(LinkStatusPageTest, WithoutACardAtAwakeningTheThroughputsStartFromZero)
{
    card.registry.serviceCount = 0;
    awake();
    card.registry.serviceCount = 1;
    setCounters({ 108, 80, 2500, 5000 });
    tick();
    EXPECT_EQ(text(u"ThroughputTx"), u"10.0");
    EXPECT_EQ(text(u"ThroughputRx"), u"20.0");
}

TEST_F(LinkStatusPageTest, AConnectedTickAsksInThisOrderWithTheseLengths)
{
    awake();
    tick();
    EXPECT_EQ(card.takeRequests(),
        (Requests { query(0x00010114, 4), query(0x0D010102, 36), query(0x0D010101, 6), query(0x0D010211, 32),
            query(0x0D710111, 32), query(0x0D710102, 16), query(0x0D010206, 4) }));
}

TEST_F(LinkStatusPageTest, AConnectedTickShowsEveryFigure)
{
    awake();
    setCounters({ 11, 25, 2000, 3000 });
    tick();
    EXPECT_EQ(text(u"Status"), connectedText);
    EXPECT_EQ(text(u"CurrentChannel"), u"6 <--> 2437000 KHz");
    EXPECT_EQ(text(u"CurrentTxRate"), u"5.5 Mbps");
    EXPECT_EQ(text(u"ThroughputTx"), u"8.0");
    EXPECT_EQ(text(u"ThroughputRx"), u"12.0");
    EXPECT_EQ(text(u"LinkQuality"), u"WEAK 40%");
    EXPECT_EQ(text(u"SignalStrength"), u"NORMAL 63%");
    EXPECT_EQ(level(u"LinkQualityState").value(), 40);
    EXPECT_EQ(level(u"SignalStrengthState").value(), 63);
    EXPECT_EQ(siteSurvey.texts, QStringList(connectedText));
}

TEST_F(LinkStatusPageTest, FiguresAreSmoothedOverSuccessiveTicks)
{
    awake();
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
    EXPECT_EQ(level(u"LinkQualityState").value(), 70);
    EXPECT_EQ(level(u"SignalStrengthState").value(), 50);
}

TEST_F(LinkStatusPageTest, SmoothingGoesOnAcrossALostLink)
{
    awake();
    setCounters({ 108, 59, 0, 0 });
    tick();
    setMediaState(NdisMediaStateDisconnected);
    tick();
    setMediaState(NdisMediaStateConnected);
    setCounters({ 108, 42, 0, 0 });
    tick();
    EXPECT_EQ(text(u"LinkQuality"), u"NORMAL 70%");
}

TEST_F(LinkStatusPageTest, ASignalThatFellToNothingIsNotAveragedIn)
{
    awake();
    setRssi(-95);
    tick();
    EXPECT_EQ(text(u"SignalStrength"), u"WEAK 0%");
    setRssi(-50);
    tick();
    EXPECT_EQ(text(u"SignalStrength"), u"GOOD 100%");
}

TEST_F(LinkStatusPageTest, TheCheckBoxShowsTheRawPowerFromTheNextTickOn)
{
    awake();
    auto* const dBm = page.findChild<QCheckBox*>(QStringLiteral("dBm"));
    ASSERT_NE(dBm, nullptr);
    tick();
    dBm->click();
    EXPECT_EQ(text(u"SignalStrength"), u"NORMAL 63%");
    setRssi(-60);
    tick();
    EXPECT_EQ(text(u"SignalStrength"), u"NORMAL -60 dBm"); // (63 + 76) / 2
    EXPECT_EQ(level(u"SignalStrengthState").value(), 69);
    dBm->click();
    tick();
    EXPECT_EQ(text(u"SignalStrength"), u"GOOD 72%");
}

TEST_F(LinkStatusPageTest, ThroughputsCountOnThroughTheWrapOfTheCounters)
{
    constexpr auto largest = std::numeric_limits<std::uint32_t>::max();
    setCounters({ 108, 80, largest - 499, largest });
    awake();
    setCounters({ 108, 80, 500, 1999 });
    tick();
    EXPECT_EQ(text(u"ThroughputTx"), u"4.0");
    EXPECT_EQ(text(u"ThroughputRx"), u"8.0");
    EXPECT_EQ(plot().history().at(0)->transmitKbps, 4U);
}

TEST_F(LinkStatusPageTest, ANameOf32BytesIsShownWholeAndAnEmptyOneAsNothing)
{
    awake();
    setNetworkName("abcdefghijklmnopqrstuvwxyz012345");
    tick();
    EXPECT_EQ(text(u"Status"), u"Connected <--> abcdefghijklmnopqrstuvwxyz012345 <--> 00-11-22-33-44-AB");
    setNetworkName("");
    tick();
    EXPECT_EQ(text(u"Status"), u"Connected <-->  <--> 00-11-22-33-44-AB");
}

TEST_F(LinkStatusPageTest, ANameThatIsNoUtf8IsShownWithASignForEachByteThatIsNoText)
{
    awake();
    setNetworkName("caf\xe9");
    tick();
    EXPECT_EQ(text(u"Status"), u"Connected <--> caf\uFFFD <--> 00-11-22-33-44-AB");
    const QString name = QStringLiteral("caf") + QChar(0xEF00 + 0xE9);
    EXPECT_EQ(siteSurvey.texts.last(), QStringLiteral("Connected <--> %1 <--> 00-11-22-33-44-AB").arg(name));
}

TEST_F(LinkStatusPageTest, ANameIsNeverTakenForMarkup)
{
    awake();
    setNetworkName("<b>A&B</b>");
    tick();
    EXPECT_EQ(page.findChild<QLabel*>(QStringLiteral("Status"))->textFormat(), Qt::PlainText);
    EXPECT_EQ(text(u"Status"), u"Connected <--> <b>A&B</b> <--> 00-11-22-33-44-AB");
}

TEST_F(LinkStatusPageTest, FailedRequestsBehindTheFirstReadAsZeros)
{
    awake();
    for (const std::uint32_t oid :
        { OID_802_11_SSID, OID_802_11_BSSID, VX_OID_802_11_STA_CONFIG, VX_OID_802_11_LINK_COUNTERS, OID_802_11_RSSI })
        card.registry.fail(oid);
    tick();
    EXPECT_EQ(card.takeOids(), connectedTick);
    EXPECT_EQ(text(u"Status"), u"Connected <-->  <--> 00-00-00-00-00-00");
    EXPECT_EQ(text(u"CurrentTxRate"), u"0 Mbps");
    EXPECT_EQ(text(u"LinkQuality"), u"WEAK 10%");
    EXPECT_EQ(text(u"SignalStrength"), u"GOOD 100%"); // 0 dBm
}

TEST_F(LinkStatusPageTest, WithoutADeviceNothingIsAsked)
{
    awake();
    tick();
    card.registry.forgetCalls();
    G_bDeviceExist = 0;
    tick();
    EXPECT_TRUE(card.registry.calls.empty());
    EXPECT_EQ(text(u"Status"), u"No Device!!");
    expectNoFigures();
    EXPECT_EQ(siteSurvey.texts.last(), u"** Disconnected **");
    EXPECT_EQ(siteSurvey.texts.size(), 2);
}

TEST_F(LinkStatusPageTest, ACardThatDoesNotAnswerCountsAsNoDevice)
{
    awake();
    tick();
    card.registry.forgetCalls();
    card.registry.fail(OID_GEN_MEDIA_CONNECT_STATUS);
    tick();
    EXPECT_EQ(card.takeOids(), Oids { OID_GEN_MEDIA_CONNECT_STATUS });
    EXPECT_EQ(text(u"Status"), u"No Device!!");
    expectNoFigures();
    EXPECT_EQ(siteSurvey.texts.last(), u"** Disconnected **");
}

TEST_F(LinkStatusPageTest, WithoutADeviceTheProfileFlagsStay)
{
    awake();
    G_configFromProfile = 1;
    G_bCheckedProfileConnect = 1;
    G_bDeviceExist = 0;
    tick();
    EXPECT_EQ(G_bCheckedProfileConnect, 1);
    EXPECT_EQ(G_configFromProfile, 1);
}

TEST_F(LinkStatusPageTest, DisconnectedWithTheRadioOnAsksForTheHardwareSwitch)
{
    awake();
    tick();
    card.registry.forgetCalls();
    setMediaState(NdisMediaStateDisconnected);
    tick();
    EXPECT_EQ(card.takeOids(), (Oids { OID_GEN_MEDIA_CONNECT_STATUS, VX_OID_802_11_STA_CONFIG }));
    EXPECT_EQ(text(u"Status"), u"Disconnected");
    expectNoFigures();
    EXPECT_EQ(siteSurvey.texts.last(), u"** Disconnected **");
}

TEST_F(LinkStatusPageTest, DisconnectedWithTheHardwareSwitchOffShowsTheRadioOff)
{
    awake();
    setMediaState(NdisMediaStateDisconnected);
    setHardwareRadio(0);
    tick();
    EXPECT_EQ(card.takeOids(), (Oids { OID_GEN_MEDIA_CONNECT_STATUS, VX_OID_802_11_STA_CONFIG }));
    EXPECT_EQ(text(u"Status"), u"Radio Status <--> OFF");
    expectNoFigures();
}

TEST_F(LinkStatusPageTest, DisconnectedWithTheRadioSwitchedOffAsksNoFurther)
{
    awake();
    setMediaState(NdisMediaStateDisconnected);
    G_bRadio = 0;
    tick();
    EXPECT_EQ(card.takeOids(), Oids { OID_GEN_MEDIA_CONNECT_STATUS });
    EXPECT_EQ(text(u"Status"), u"Radio Status <--> OFF");
    expectNoFigures();
    EXPECT_EQ(siteSurvey.texts, QStringList(QStringLiteral("** Disconnected **")));
}

TEST_F(LinkStatusPageTest, EveryMediaStateButConnectedIsDisconnected)
{
    awake();
    setMediaState(7);
    tick();
    EXPECT_EQ(text(u"Status"), u"Disconnected");
}

TEST_F(LinkStatusPageTest, ALostLinkLetsTheProfilePageCheckAgainOnlyBehindAProfile)
{
    awake();
    setMediaState(NdisMediaStateDisconnected);
    G_bCheckedProfileConnect = 1;
    tick();
    EXPECT_EQ(G_bCheckedProfileConnect, 1);
    G_configFromProfile = 1;
    tick();
    EXPECT_EQ(G_bCheckedProfileConnect, 0);
    EXPECT_EQ(G_configFromProfile, 1);
}

TEST_F(LinkStatusPageTest, AConnectedTickTellsWhetherTheLinkComesFromAProfile)
{
    awake();
    G_configFromProfile = 1;
    tick();
    EXPECT_EQ(G_bCheckedProfileConnect, 1);
    G_configFromProfile = 0;
    tick();
    EXPECT_EQ(G_bCheckedProfileConnect, 0);
}

TEST_F(LinkStatusPageTest, AnUnknownFrequencyEndsTheTickWhereTheHandlerSaysSo)
{
    awake();
    tick();
    card.registry.forgetCalls();
    siteSurvey.texts.clear();
    setFrequency(2419000);
    setCounters({ 2, 10, 250000, 250000 });
    setNetworkName("other");
    G_configFromProfile = 1;
    tick();
    EXPECT_EQ(card.assertions.failures,
        (std::vector<RecordingAssertionHandler::Failure> { { "OnTimer", "LinkStatusPageController",
            "LinkStatusPageController", 169, "Invalid parameter not satisfying: FALSE" } }));
    EXPECT_EQ(card.takeOids(),
        (Oids { OID_GEN_MEDIA_CONNECT_STATUS, OID_802_11_SSID, OID_802_11_BSSID, OID_802_11_CONFIGURATION }));
    EXPECT_EQ(text(u"CurrentChannel"), u"6 <--> 2437000 KHz"); // as it was
    EXPECT_EQ(text(u"CurrentTxRate"), u"54 Mbps");
    EXPECT_TRUE(siteSurvey.texts.isEmpty());
    EXPECT_EQ(G_bCheckedProfileConnect, 0);
    EXPECT_EQ(plot().history().at(0), std::nullopt);
}

TEST_F(LinkStatusPageTest, AnUnknownFrequencyTakesTheFirstChannelWhereTheHandlerGoesOn)
{
    awake();
    card.assertions.goOn = true;
    setFrequency(2419000);
    tick();
    EXPECT_EQ(card.assertions.failures.size(), 1U);
    EXPECT_EQ(card.takeOids(), connectedTick);
    EXPECT_EQ(text(u"CurrentChannel"), u"1 <--> 2419000 KHz");
    EXPECT_EQ(text(u"CurrentTxRate"), u"54 Mbps");
    EXPECT_EQ(siteSurvey.texts, QStringList(connectedText));
}

TEST_F(LinkStatusPageTest, AConfigurationThatCannotBeReadIsAnUnknownFrequency)
{
    awake();
    card.registry.fail(OID_802_11_CONFIGURATION);
    tick();
    EXPECT_EQ(card.assertions.failures.size(), 1U);
}

TEST_F(LinkStatusPageTest, WorksWithoutASiteSurveyPage)
{
    LinkStatusPageController alone(card.adapter, card.runLoop, card.assertions, nullptr);
    alone.awakeFromNib();
    card.tick();
    EXPECT_EQ(alone.findChild<QLabel*>(QStringLiteral("Status"))->text(), connectedText);
    G_bDeviceExist = 0;
    card.tick();
    EXPECT_EQ(alone.findChild<QLabel*>(QStringLiteral("Status"))->text(), u"No Device!!");
}

TEST_F(LinkStatusPageTest, ThePlotTakesTheFiguresOfEachTickAndGapsWithoutALink)
{
    awake();
    setCounters({ 108, 59, 2000, 3000 });
    tick();
    EXPECT_EQ(plot().history().at(0), (LinkSample { 80, 63, 8, 12 }));
    setMediaState(NdisMediaStateDisconnected);
    tick();
    G_bDeviceExist = 0;
    tick();
    EXPECT_EQ(plot().history().size(), 3U);
    EXPECT_EQ(plot().history().at(0), std::nullopt);
    EXPECT_EQ(plot().history().at(1), std::nullopt);
    EXPECT_EQ(plot().accessibleDescription(), u"Not connected.");
    EXPECT_EQ(plot().accessibleName(), u"Link over the last five minutes");
}

TEST_F(LinkStatusPageTest, ThePlotLeavesOutAThroughputThatCoversMoreThanItsTick)
{
    awake();
    tick();
    setMediaState(NdisMediaStateDisconnected);
    tick();
    setMediaState(NdisMediaStateConnected);
    setCounters({ 108, 59, 25000, 50000 });
    tick();
    EXPECT_EQ(text(u"ThroughputTx"), u"100.0");
    EXPECT_EQ(plot().history().at(0)->transmitKbps, std::nullopt);
    EXPECT_EQ(plot().history().at(0)->receiveKbps, std::nullopt);
    setCounters({ 108, 59, 25250, 50500 });
    tick();
    EXPECT_EQ(plot().history().at(0)->transmitKbps, 1U);
    EXPECT_EQ(plot().history().at(0)->receiveKbps, 2U);
}

TEST_F(LinkStatusPageTest, ThePlotLeavesOutTheJumpOfARestartedCounter)
{
    setCounters({ 108, 59, 5000, 5000 });
    awake();
    setCounters({ 108, 59, 0, 5250 });
    tick();
    EXPECT_EQ(text(u"ThroughputTx"), u"17179849.0");
    EXPECT_EQ(plot().history().at(0)->transmitKbps, std::nullopt);
    EXPECT_EQ(plot().history().at(0)->receiveKbps, 1U);
}

} // namespace
