#include "services/simulator/card/Beacon.h"

#include "tests/services/simulator/card/CardUnderTest.h"

#include <gtest/gtest.h>

#include <array>

namespace {

std::uint8_t octet(const Bytes& bytes, std::size_t offset)
{
    return offset < bytes.size() ? std::to_integer<std::uint8_t>(bytes[offset]) : std::uint8_t { 0 };
}

// Walks the elements like the utility, which advances by the length byte without the two header bytes. Returns the
// offset of the first element that looks like a WPA element, 0 if there is none.
std::size_t findWpaElementLikeTheUtility(const Bytes& entry)
{
    const auto head = recordAt<WLAN_BSSID_EX>(entry);
    std::size_t position = 12;
    while (head->IELength > position + 3) {
        const std::size_t element = 116 + position;
        if (octet(entry, element) == 221 && octet(entry, element + 1) > 15)
            return element;
        position += octet(entry, element + 1);
        if (octet(entry, 116 + position + 1) == 0)
            return 0;
    }
    return 0;
}

// Walks the elements as IEEE 802.11 defines them; they must fill the entry exactly.
std::vector<std::uint8_t> elementIds(const Bytes& entry)
{
    std::vector<std::uint8_t> ids;
    std::size_t offset = sizeof(WLAN_BSSID_EX);
    while (offset + 2 <= entry.size()) {
        ids.push_back(octet(entry, offset));
        offset += 2U + octet(entry, offset + 1);
    }
    EXPECT_EQ(offset, entry.size());
    return ids;
}

Bytes encoded(const ScenarioNetwork& network)
{
    return encodeBssidEntry(beaconOf({ network, network.signalDbm }, 1234));
}

ScenarioNetwork wpaNetwork(Security security, Cipher cipher)
{
    ScenarioNetwork network = openNetwork("wpa", 7, -61);
    network.security = security;
    network.cipher = cipher;
    network.adHoc = security == Security::WpaNone;
    network.passphrase = "a good passphrase";
    return network;
}

struct WpaCase {
    Security security;
    Cipher cipher;
    std::uint8_t group;
    std::uint8_t pairwise;
    std::uint8_t authentication;
};

class BeaconWpa : public testing::TestWithParam<WpaCase> { };

} // namespace

TEST(Beacon, DescribesAnOpenNetwork)
{
    const ScenarioNetwork network = openNetwork("cafe", 0x55, -63);
    const Bytes bytes = encoded(network);
    const auto entry = recordAt<WLAN_BSSID_EX>(bytes);
    ASSERT_TRUE(entry);
    EXPECT_EQ(valueOf(entry->Length), bytes.size());
    EXPECT_EQ(valueOf(entry->IELength), bytes.size() - 116);
    EXPECT_EQ(entry->MacAddress, (MacAddress { 0x00, 0x11, 0x22, 0x33, 0x44, 0x55 }));
    EXPECT_EQ(valueOf(entry->Ssid.SsidLength), 4U);
    EXPECT_EQ(entry->Ssid.Ssid[3], 'e');
    EXPECT_EQ(entry->Ssid.Ssid[4], 0);
    EXPECT_EQ(valueOf(entry->Privacy), 0U);
    EXPECT_EQ(valueOf(entry->Rssi), -63);
    EXPECT_EQ(valueOf(entry->NetworkTypeInUse), Ndis802_11OFDM24);
    EXPECT_EQ(valueOf(entry->Configuration.Length), 32U);
    EXPECT_EQ(valueOf(entry->Configuration.BeaconPeriod), 100U);
    EXPECT_EQ(valueOf(entry->Configuration.DSConfig), 2437000U);
    EXPECT_EQ(valueOf(entry->InfrastructureMode), Ndis802_11Infrastructure);
    EXPECT_EQ(entry->SupportedRates[0], 0x82);
    EXPECT_EQ(entry->SupportedRates[11], 108);
    EXPECT_EQ(entry->Capabilities & 0x0013, 0x0001);
    EXPECT_EQ(elementIds(bytes), (std::vector<std::uint8_t> { 0, 1, 3, 5, 42, 50 }));
    EXPECT_EQ(findWpaElementLikeTheUtility(bytes), 0U);
}

TEST(Beacon, SetsPrivacyButNoWpaElementForWep)
{
    ScenarioNetwork network = openNetwork("wep", 1);
    network.security = Security::Wep;
    const Bytes bytes = encoded(network);
    EXPECT_EQ(valueOf(recordAt<WLAN_BSSID_EX>(bytes)->Privacy), 1U);
    EXPECT_EQ(recordAt<WLAN_BSSID_EX>(bytes)->Capabilities & 0x0010, 0x0010);
    EXPECT_EQ(findWpaElementLikeTheUtility(bytes), 0U);
}

TEST(Beacon, OmitsNameAndLengthOfAHiddenNetwork)
{
    ScenarioNetwork network = openNetwork("secret", 1);
    network.hidden = true;
    const Bytes bytes = encoded(network);
    const auto entry = recordAt<WLAN_BSSID_EX>(bytes);
    EXPECT_EQ(valueOf(entry->Ssid.SsidLength), 0U);
    EXPECT_EQ(entry->Ssid.Ssid, (std::array<std::uint8_t, 32> {}));
    const std::string everything(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    EXPECT_EQ(everything.find("secret"), std::string::npos);
}

TEST(Beacon, ReportsAllThirtyTwoBytesOfAName)
{
    const std::string name = "0123456789abcdef0123456789ABCDE\xFF";
    const Bytes bytes = encoded(openNetwork(name, 1));
    const auto entry = recordAt<WLAN_BSSID_EX>(bytes);
    EXPECT_EQ(valueOf(entry->Ssid.SsidLength), 32U);
    EXPECT_EQ(entry->Ssid.Ssid[31], 0xFF);
    EXPECT_EQ(valueOf(entry->Privacy), 0U); // the name did not overflow its field
}

TEST(Beacon, ReportsTypesOfFiveGhzAndAdHocNetworks)
{
    ScenarioNetwork high = openNetwork("high", 1);
    high.channel = 149;
    const Bytes highBytes = encoded(high);
    EXPECT_EQ(valueOf(recordAt<WLAN_BSSID_EX>(highBytes)->NetworkTypeInUse), Ndis802_11OFDM5);
    EXPECT_EQ(valueOf(recordAt<WLAN_BSSID_EX>(highBytes)->Configuration.DSConfig), 5745000U);
    EXPECT_EQ(elementIds(highBytes), (std::vector<std::uint8_t> { 0, 1, 5 }));

    ScenarioNetwork adHoc = openNetwork("adhoc", 2);
    adHoc.adHoc = true;
    const Bytes adHocBytes = encoded(adHoc);
    EXPECT_EQ(valueOf(recordAt<WLAN_BSSID_EX>(adHocBytes)->NetworkTypeInUse), Ndis802_11DS);
    EXPECT_EQ(valueOf(recordAt<WLAN_BSSID_EX>(adHocBytes)->InfrastructureMode), Ndis802_11IBSS);
    EXPECT_EQ(recordAt<WLAN_BSSID_EX>(adHocBytes)->Capabilities & 0x0003, 0x0002);
    EXPECT_EQ(elementIds(adHocBytes), (std::vector<std::uint8_t> { 0, 1, 3, 6 }));
}

TEST_P(BeaconWpa, PutsTheWpaElementFirst)
{
    const WpaCase& expected = GetParam();
    const Bytes bytes = encoded(wpaNetwork(expected.security, expected.cipher));
    const std::size_t element = findWpaElementLikeTheUtility(bytes);
    ASSERT_NE(element, 0U);
    const std::array<std::uint8_t, 24> golden {
        221, 22, // id, length
        0x00, 0x50, 0xF2, 0x01, // OUI, type
        0x01, 0x00, // version
        0x00, 0x50, 0xF2, expected.group, //
        0x01, 0x00, 0x00, 0x50, 0xF2, expected.pairwise, //
        0x01, 0x00, 0x00, 0x50, 0xF2, expected.authentication //
    };
    for (std::size_t i = 0; i < golden.size(); ++i)
        EXPECT_EQ(octet(bytes, element + i), golden[i]) << "octet " << i;
    EXPECT_EQ(elementIds(bytes).front(), 221);
}

INSTANTIATE_TEST_SUITE_P(Kinds, BeaconWpa,
    testing::Values(WpaCase { Security::WpaPsk, Cipher::Tkip, 2, 2, 2 },
        WpaCase { Security::WpaPsk, Cipher::Aes, 4, 4, 2 }, WpaCase { Security::WpaNone, Cipher::Tkip, 2, 0, 0 },
        WpaCase { Security::WpaNone, Cipher::Aes, 4, 0, 0 }, WpaCase { Security::WpaEnterprise, Cipher::Tkip, 2, 2, 1 },
        WpaCase { Security::WpaEnterprise, Cipher::Aes, 4, 4, 1 }));
