#include "services/card/BssidEncoder.h"

#include <gtest/gtest.h>

namespace {

BssDescription sample()
{
    BssDescription bss;
    bss.bssid = { 0x00, 0x11, 0x22, 0x33, 0x44, 0x55 };
    bss.ssid = { 'c', 'a', 'f', 'e' };
    bss.rssiDbm = -63;
    bss.networkType = Ndis802_11OFDM24;
    bss.frequencyKhz = 2437000;
    bss.beaconIntervalKusec = 200;
    bss.atimWindowKusec = 5;
    bss.capabilities = capabilityIbss | capabilityPrivacy;
    bss.timestampUs = 0x0807060504030201;
    bss.rates = { 0x82, 4 };
    bss.elements = { 221, 2, 0xAA, 0xBB };
    return bss;
}

Bytes goldenEntry()
{
    const std::vector<unsigned> head {
        132, 0, 0, 0, // Length
        0x00, 0x11, 0x22, 0x33, 0x44, 0x55, 0, 0, // MacAddress, Reserved
        4, 0, 0, 0, // SsidLength
        'c', 'a', 'f', 'e', 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, // Ssid
        1, 0, 0, 0, // Privacy
        0xC1, 0xFF, 0xFF, 0xFF, // Rssi
        3, 0, 0, 0, // NetworkTypeInUse
        32, 0, 0, 0, 200, 0, 0, 0, 5, 0, 0, 0, // Configuration: Length, BeaconPeriod, ATIMWindow
        0x88, 0x2F, 0x25, 0x00, // DSConfig
        16, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, // FHConfig
        0, 0, 0, 0, // InfrastructureMode
        0x82, 4, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, // SupportedRates
        16, 0, 0, 0, // IELength
        1, 2, 3, 4, 5, 6, 7, 8, // Timestamp
        200, 0, // BeaconInterval
        0x12, 0x00, // Capabilities
        221, 2, 0xAA, 0xBB, // elements
    };
    Bytes bytes;
    for (const unsigned octet : head)
        bytes.push_back(static_cast<std::byte>(octet));
    return bytes;
}

} // namespace

TEST(BssidEncoder, EncodesEveryField)
{
    EXPECT_EQ(encodeBssidEntry(sample()), goldenEntry());
}

TEST(BssidEncoder, DerivesModeAndPrivacyFromTheCapabilities)
{
    BssDescription bss = sample();
    bss.capabilities = capabilityEss;
    const auto entry = recordAt<WLAN_BSSID_EX>(encodeBssidEntry(bss));
    ASSERT_TRUE(entry);
    const std::int32_t mode = entry->InfrastructureMode;
    const std::uint32_t privacy = entry->Privacy;
    EXPECT_EQ(mode, Ndis802_11Infrastructure);
    EXPECT_EQ(privacy, 0U);
}

TEST(BssidEncoder, TruncatesNamesAndRatesToTheirFields)
{
    BssDescription bss = sample();
    bss.ssid.assign(40, 0xFF);
    bss.rates.assign(20, 0xEE);
    const auto entry = recordAt<WLAN_BSSID_EX>(encodeBssidEntry(bss));
    ASSERT_TRUE(entry);
    const std::uint32_t ssidLength = entry->Ssid.SsidLength;
    const std::uint32_t privacy = entry->Privacy;
    const std::uint32_t elementBytes = entry->IELength;
    EXPECT_EQ(ssidLength, 32U);
    EXPECT_EQ(privacy, 1U); // the field after the name
    EXPECT_EQ(elementBytes, 16U); // the field after the rates
}
