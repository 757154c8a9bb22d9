#pragma once

#include "driver/records/NdisRecords.h"
#include "driver/records/VxRecords.h"
#include "monitor/ui/LevelIndicator.h"
#include "monitor/ui/LinkPlot.h"
#include "monitor/ui/LinkStatusPageController.h"
#include "tests/monitor/ui/MonitorDoubles.h"

#include <QLabel>
#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>
#include <utility>

// A page over a connected card, before it is awakened.
struct LinkStatusPageTest : testing::Test {
    MonitoredCard card;
    RecordingSiteSurveyPage siteSurvey;
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

    // Awakens the page and discards its request.
    void awake()
    {
        page.awakeFromNib();
        card.registry.forgetCalls();
    }
    void tick() { card.tick(); }
    [[nodiscard]] Requests requestsOfTick()
    {
        card.registry.forgetCalls();
        tick();
        return card.takeRequests();
    }

    [[nodiscard]] QString text(QStringView name) const
    {
        const auto* const label = page.findChild<QLabel*>(name.toString());
        return label != nullptr ? label->text() : QStringLiteral("(no such label)");
    }
    // Channel, rate, transmit and receive throughput, link quality, signal strength.
    [[nodiscard]] QStringList figures() const
    {
        return { text(u"CurrentChannel"), text(u"CurrentTxRate"), text(u"ThroughputTx"), text(u"ThroughputRx"),
            text(u"LinkQuality"), text(u"SignalStrength") };
    }
    [[nodiscard]] LevelIndicator& level(QStringView name) const
    {
        return *page.findChild<LevelIndicator*>(name.toString());
    }
    // Values of the link quality and signal strength indicators.
    [[nodiscard]] std::pair<int, int> levels() const
    {
        return { level(u"LinkQualityState").value(), level(u"SignalStrengthState").value() };
    }
    [[nodiscard]] const LinkHistory& plotted() const { return page.findChild<LinkPlot*>()->history(); }

    void expectNoLink(QStringView status) const
    {
        EXPECT_EQ(text(u"Status"), status);
        EXPECT_EQ(figures(), QStringList(6, QString()));
        EXPECT_EQ(levels(), std::pair(0, 0));
        EXPECT_EQ(siteSurvey.texts.last(), u"** Disconnected **");
        EXPECT_EQ(plotted().at(0), std::nullopt);
    }
};
