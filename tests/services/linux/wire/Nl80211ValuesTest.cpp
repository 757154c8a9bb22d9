#include "services/linux/wire/Nl80211Values.h"

#include "tests/services/linux/wire/AttributeBuilder.h"

#include <gtest/gtest.h>

#include <linux/nl80211.h>

namespace {

const Bytes address = toBytes({ 2, 0, 0, 0, 0xA0, 1 });

AttributeBuilder bss()
{
    return AttributeBuilder().add(NL80211_BSS_BSSID, address).number(NL80211_BSS_FREQUENCY, std::uint32_t { 2437 });
}

Bytes scanMessage(const AttributeBuilder& entry)
{
    return AttributeBuilder().number(NL80211_ATTR_IFINDEX, 3U).nest(NL80211_ATTR_BSS, entry).bytes();
}

} // namespace

TEST(ScanEntry, HasEveryField)
{
    const auto entry = scanEntry(scanMessage(bss()
                                                 .number(NL80211_BSS_TSF, std::uint64_t { 77 })
                                                 .number(NL80211_BSS_BEACON_INTERVAL, std::uint16_t { 100 })
                                                 .number(NL80211_BSS_CAPABILITY, std::uint16_t { 0x11 })
                                                 .number(NL80211_BSS_SIGNAL_MBM, std::int32_t { -6100 })
                                                 .number(NL80211_BSS_SEEN_MS_AGO, std::uint32_t { 250 })
                                                 .number(NL80211_BSS_STATUS, std::uint32_t { 1 })
                                                 .add(NL80211_BSS_BEACON_IES, toBytes({ 0, 0 }))
                                                 .add(NL80211_BSS_INFORMATION_ELEMENTS, toBytes({ 0, 1, 'a' }))));
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->bssid, (MacAddress { 2, 0, 0, 0, 0xA0, 1 }));
    EXPECT_EQ(entry->frequencyMhz, 2437U);
    EXPECT_EQ(entry->timestampUs, 77U);
    EXPECT_EQ(entry->beaconIntervalKusec, 100);
    EXPECT_EQ(entry->capabilities, 0x11);
    EXPECT_EQ(entry->signalDbm, -61);
    EXPECT_EQ(entry->ageMs, 250U);
    EXPECT_TRUE(entry->isAssociated);
    EXPECT_EQ(entry->elements, (Octets { 0, 1, 'a' }));
}

TEST(ScanEntry, NeedsAddressAndFrequency)
{
    EXPECT_FALSE(scanEntry({}));
    EXPECT_FALSE(scanEntry(scanMessage(AttributeBuilder().add(NL80211_BSS_BSSID, address))));
    EXPECT_FALSE(scanEntry(scanMessage(AttributeBuilder().number(NL80211_BSS_FREQUENCY, 2437U))));
    EXPECT_TRUE(scanEntry(scanMessage(bss())));
}

TEST(ScanEntry, OwnCellHasNoSignal)
{
    EXPECT_FALSE(scanEntry(scanMessage(bss()))->signalDbm);
    // A driver without a scale in dBm counts from 0 to 100.
    EXPECT_EQ(scanEntry(scanMessage(bss().number(NL80211_BSS_SIGNAL_UNSPEC, std::uint8_t { 60 })))->signalDbm, -70);
}

TEST(ScanEntry, FallsBackToTheElementsOfTheBeacon)
{
    EXPECT_EQ(scanEntry(scanMessage(bss().add(NL80211_BSS_BEACON_IES, toBytes({ 0, 1, 'b' }))))->elements,
        (Octets { 0, 1, 'b' }));
}

TEST(StationInfo, HasSignalRateAndCounters)
{
    const auto rate = AttributeBuilder()
                          .number(NL80211_RATE_INFO_BITRATE, std::uint16_t { 540 })
                          .number(NL80211_RATE_INFO_BITRATE32, std::uint32_t { 541 });
    const auto info = AttributeBuilder()
                          .number(NL80211_STA_INFO_SIGNAL, std::int8_t { -48 })
                          .nest(NL80211_STA_INFO_TX_BITRATE, rate)
                          .number(NL80211_STA_INFO_TX_PACKETS, std::uint32_t { 10 })
                          .number(NL80211_STA_INFO_TX_RETRIES, std::uint32_t { 2 })
                          .number(NL80211_STA_INFO_TX_FAILED, std::uint32_t { 1 })
                          .number(NL80211_STA_INFO_RX_PACKETS, std::uint32_t { 20 });
    const auto station
        = stationInfo(AttributeBuilder().add(NL80211_ATTR_MAC, address).nest(NL80211_ATTR_STA_INFO, info).bytes());
    ASSERT_TRUE(station);
    EXPECT_EQ(station->signalDbm, -48);
    EXPECT_EQ(station->transmitBitrate, 541U);
    EXPECT_EQ(station->transmittedFrames, 10U);
    EXPECT_EQ(station->transmitRetries, 2U);
    EXPECT_EQ(station->transmitFailures, 1U);
    EXPECT_EQ(station->receivedFrames, 20U);
    EXPECT_FALSE(stationInfo({}));
}

TEST(Wiphy, IsCollectedFromManyMessages)
{
    const auto channel = [](std::uint32_t mhz) {
        return AttributeBuilder()
            .number(NL80211_FREQUENCY_ATTR_FREQ, mhz)
            .number(NL80211_FREQUENCY_ATTR_MAX_TX_POWER, std::uint32_t { 2000 });
    };
    const auto band = [](std::uint16_t number, const AttributeBuilder& content) {
        return AttributeBuilder().nest(NL80211_ATTR_WIPHY_BANDS, AttributeBuilder().nest(number, content)).bytes();
    };
    const auto frequencies = [](const AttributeBuilder& one) {
        return AttributeBuilder().nest(NL80211_BAND_ATTR_FREQS, AttributeBuilder().nest(0, one));
    };
    WiphyFacts facts;
    addWiphy(facts,
        band(NL80211_BAND_2GHZ,
            AttributeBuilder().nest(NL80211_BAND_ATTR_RATES,
                AttributeBuilder().nest(
                    0, AttributeBuilder().number(NL80211_BITRATE_ATTR_RATE, std::uint32_t { 110 })))));
    addWiphy(facts, band(NL80211_BAND_2GHZ, frequencies(channel(2412))));
    addWiphy(facts, band(NL80211_BAND_5GHZ, frequencies(channel(5260).flag(NL80211_FREQUENCY_ATTR_RADAR))));
    addWiphy(facts, band(NL80211_BAND_5GHZ, frequencies(channel(5900).flag(NL80211_FREQUENCY_ATTR_DISABLED))));
    EXPECT_EQ(facts.channels,
        (std::vector<ChannelFacts> {
            { 2412, 2000, false, false }, { 5260, 2000, false, true }, { 5900, 2000, true, false } }));
    EXPECT_EQ(facts.twoGhzRates, (std::vector<std::uint8_t> { 22 }));
}

TEST(Interface, NeedsANameToHaveANetworkInterface)
{
    EXPECT_FALSE(interfaceFacts(AttributeBuilder().number(NL80211_ATTR_WIPHY, 1U).bytes()));
    const auto facts = interfaceFacts(AttributeBuilder()
                                          .number(NL80211_ATTR_WIPHY, 1U)
                                          .number(NL80211_ATTR_IFINDEX, 4U)
                                          .text(NL80211_ATTR_IFNAME, "wlan0")
                                          .number(NL80211_ATTR_IFTYPE, std::uint32_t { NL80211_IFTYPE_STATION })
                                          .bytes());
    ASSERT_TRUE(facts);
    EXPECT_EQ(facts->name, "wlan0");
    EXPECT_EQ(facts->index, 4U);
    EXPECT_EQ(facts->type, std::uint32_t { NL80211_IFTYPE_STATION });
}

TEST(Survey, HasTheNoiseOfTheChannelInUse)
{
    const auto survey = surveyFacts(AttributeBuilder()
                                        .nest(NL80211_ATTR_SURVEY_INFO,
                                            AttributeBuilder()
                                                .number(NL80211_SURVEY_INFO_FREQUENCY, 2412U)
                                                .number(NL80211_SURVEY_INFO_NOISE, std::int8_t { -92 })
                                                .flag(NL80211_SURVEY_INFO_IN_USE))
                                        .bytes());
    ASSERT_TRUE(survey);
    EXPECT_EQ(survey->noiseDbm, -92);
    EXPECT_TRUE(survey->isInUse);
}

TEST(ScanEvent, NamesItsFrequencies)
{
    const Bytes message = AttributeBuilder()
                              .number(NL80211_ATTR_IFINDEX, 4U)
                              .nest(NL80211_ATTR_SCAN_FREQUENCIES, AttributeBuilder().number(0, 2412U).number(1, 5180U))
                              .bytes();
    EXPECT_EQ(scannedFrequencies(message), (std::vector<std::uint32_t> { 2412, 5180 }));
    EXPECT_EQ(interfaceIndex(message), 4U);
    EXPECT_TRUE(scannedFrequencies({}).empty());
}

TEST(Wiphy, KnowsWhichNewerRatesStationsHave)
{
    const auto he = [](std::uint16_t type) {
        return AttributeBuilder().nest(1,
            AttributeBuilder()
                .nest(NL80211_BAND_IFTYPE_ATTR_IFTYPES, AttributeBuilder().flag(type))
                .add(NL80211_BAND_IFTYPE_ATTR_HE_CAP_MAC, toBytes({ 1, 2, 3, 4, 5, 6 })));
    };
    const auto band = [&he](std::uint16_t type) {
        return AttributeBuilder()
            .add(NL80211_BAND_ATTR_VHT_MCS_SET, toBytes({ 1 }))
            .nest(NL80211_BAND_ATTR_IFTYPE_DATA, he(type));
    };
    WiphyFacts facts;
    addWiphy(facts,
        AttributeBuilder()
            .nest(NL80211_ATTR_WIPHY_BANDS, AttributeBuilder().nest(NL80211_BAND_5GHZ, band(NL80211_IFTYPE_STATION)))
            .bytes());
    EXPECT_TRUE(facts.fiveGhzNewer.hasVht);
    EXPECT_TRUE(facts.fiveGhzNewer.hasHe);
    EXPECT_EQ(facts.twoGhzNewer, WiphyFacts::NewerRates {});
    WiphyFacts accessPointOnly;
    addWiphy(accessPointOnly,
        AttributeBuilder()
            .nest(NL80211_ATTR_WIPHY_BANDS, AttributeBuilder().nest(NL80211_BAND_2GHZ, band(NL80211_IFTYPE_AP)))
            .bytes());
    EXPECT_FALSE(accessPointOnly.twoGhzNewer.hasHe);
}
