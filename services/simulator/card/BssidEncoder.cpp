#include "services/simulator/card/BssidEncoder.h"

#include "driver/records/ChannelTable.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr std::uint16_t beaconIntervalKusec = 100;
constexpr std::size_t fixedElementBytes = 12; // timestamp, beacon interval, capabilities
constexpr std::uint8_t basicRate = 0x80;
constexpr std::size_t ratesInFirstElement = 8;

// Element ids of IEEE 802.11
constexpr std::uint8_t elementSsid = 0;
constexpr std::uint8_t elementSupportedRates = 1;
constexpr std::uint8_t elementDsParameters = 3;
constexpr std::uint8_t elementTrafficMap = 5;
constexpr std::uint8_t elementIbssParameters = 6;
constexpr std::uint8_t elementErp = 42;
constexpr std::uint8_t elementExtendedRates = 50;
constexpr std::uint8_t elementVendor = 221;

// Capability bits of IEEE 802.11
constexpr std::uint16_t capabilityEss = 0x0001;
constexpr std::uint16_t capabilityIbss = 0x0002;
constexpr std::uint16_t capabilityPrivacy = 0x0010;
constexpr std::uint16_t capabilityShortPreamble = 0x0020;

// Last octets of the suites under 00-50-F2
constexpr std::uint8_t suiteNone = 0;
constexpr std::uint8_t suiteTkip = 2;
constexpr std::uint8_t suiteCcmp = 4;
constexpr std::uint8_t suiteEnterprise = 1;
constexpr std::uint8_t suitePresharedKey = 2;

using Octets = std::vector<std::uint8_t>;

void appendElement(Octets& elements, std::uint8_t id, const Octets& content)
{
    elements.push_back(id);
    elements.push_back(static_cast<std::uint8_t>(content.size()));
    elements.insert(elements.end(), content.begin(), content.end());
}

std::uint8_t authenticationSuite(Security security)
{
    switch (security) {
    case Security::WpaPsk:
        return suitePresharedKey;
    case Security::WpaEnterprise:
        return suiteEnterprise;
    case Security::Open:
    case Security::Wep:
    case Security::WpaNone:
        break;
    }
    return suiteNone;
}

bool isWpa(Security security)
{
    return security == Security::WpaPsk || security == Security::WpaNone || security == Security::WpaEnterprise;
}

// WPA 1: version, group suite, one pairwise suite, one authentication suite. An ad hoc network has no pairwise keys
// and names no pairwise suite of its own.
Octets wpaContent(const ScenarioNetwork& network)
{
    const std::uint8_t cipher = network.cipher == Cipher::Aes ? suiteCcmp : suiteTkip;
    const std::uint8_t pairwise = network.security == Security::WpaNone ? suiteNone : cipher;
    return {
        0x00, 0x50, 0xF2, 0x01, // organisation and type
        0x01, 0x00, // version
        0x00, 0x50, 0xF2, cipher, // group
        0x01, 0x00, // pairwise suites
        0x00, 0x50, 0xF2, pairwise, //
        0x01, 0x00, // authentication suites
        0x00, 0x50, 0xF2, authenticationSuite(network.security) //
    };
}

// The first four rates are basic ones; those that do not fit the first element go into the extended one.
Octets markedRates(const ScenarioNetwork& network)
{
    Octets rates = supportedRates(network);
    for (std::size_t i = 0; i < std::min<std::size_t>(4, rates.size()); ++i)
        rates[i] = static_cast<std::uint8_t>(rates[i] | basicRate);
    return rates;
}

std::uint32_t networkType(const ScenarioNetwork& network)
{
    if (isFiveGhz(network))
        return Ndis802_11OFDM5;
    return network.adHoc ? Ndis802_11DS : Ndis802_11OFDM24;
}

Octets variableElements(const ScenarioNetwork& network)
{
    Octets elements;
    // First, because the utility steps from element to element by the length byte alone, two octets short of the next
    // one: an element behind others is found only by luck.
    if (isWpa(network.security))
        appendElement(elements, elementVendor, wpaContent(network));

    appendElement(elements, elementSsid, network.hidden ? Octets {} : Octets(network.ssid.begin(), network.ssid.end()));

    const Octets rates = markedRates(network);
    const auto split = rates.begin() + static_cast<std::ptrdiff_t>(std::min(ratesInFirstElement, rates.size()));
    appendElement(elements, elementSupportedRates, Octets(rates.begin(), split));
    if (!isFiveGhz(network))
        appendElement(elements, elementDsParameters, { static_cast<std::uint8_t>(network.channel) });
    if (network.adHoc)
        appendElement(elements, elementIbssParameters, { 0, 0 });
    else
        appendElement(elements, elementTrafficMap, { 0, 1, 0, 0 });
    if (networkType(network) == Ndis802_11OFDM24)
        appendElement(elements, elementErp, { 0 });
    if (split != rates.end())
        appendElement(elements, elementExtendedRates, Octets(split, rates.end()));
    return elements;
}

std::uint16_t capabilities(const ScenarioNetwork& network)
{
    std::uint16_t bits = network.adHoc ? capabilityIbss : capabilityEss;
    if (network.security != Security::Open)
        bits = static_cast<std::uint16_t>(bits | capabilityPrivacy);
    if (!isFiveGhz(network))
        bits = static_cast<std::uint16_t>(bits | capabilityShortPreamble);
    return bits;
}

WLAN_BSSID_EX fixedPart(const HeardNetwork& heard, std::size_t variableBytes, std::int64_t nowMs)
{
    const ScenarioNetwork& network = heard.network;
    WLAN_BSSID_EX entry {};
    entry.Length = static_cast<std::uint32_t>(sizeof(entry) + variableBytes);
    entry.MacAddress = network.bssid;
    if (!network.hidden) {
        entry.Ssid.SsidLength = static_cast<std::uint32_t>(std::min(network.ssid.size(), entry.Ssid.Ssid.size()));
        std::memcpy(entry.Ssid.Ssid.data(), network.ssid.data(), entry.Ssid.SsidLength);
    }
    entry.Privacy = network.security == Security::Open ? 0 : 1;
    entry.Rssi = heard.signalDbm;
    entry.NetworkTypeInUse = networkType(network);
    entry.Configuration.Length = sizeof(NDIS_802_11_CONFIGURATION);
    entry.Configuration.BeaconPeriod = beaconIntervalKusec;
    entry.Configuration.DSConfig = frequencyOfChannel(network.channel);
    entry.Configuration.FHConfig.Length = sizeof(NDIS_802_11_CONFIGURATION_FH);
    entry.InfrastructureMode = network.adHoc ? Ndis802_11IBSS : Ndis802_11Infrastructure;
    const Octets rates = markedRates(network);
    std::copy(rates.begin(), rates.end(), entry.SupportedRates.begin());
    entry.IELength = static_cast<std::uint32_t>(fixedElementBytes + variableBytes);
    const std::int64_t timestampUs = nowMs * 1000;
    std::memcpy(entry.Timestamp.data(), &timestampUs, sizeof(timestampUs));
    entry.BeaconInterval = beaconIntervalKusec;
    entry.Capabilities = capabilities(network);
    return entry;
}

} // namespace

std::vector<std::uint8_t> supportedRates(const ScenarioNetwork& network)
{
    if (isFiveGhz(network))
        return { 12, 18, 24, 36, 48, 72, 96, 108 };
    if (network.adHoc)
        return { 2, 4, 11, 22 };
    return { 2, 4, 11, 22, 12, 18, 24, 36, 48, 72, 96, 108 };
}

std::uint32_t frequencyOfChannel(std::int32_t channel)
{
    for (const ChannelFreq& row : ChannelFreqTable) {
        if (row.channel == channel)
            return row.frequencyKhz;
    }
    return 0;
}

Bytes encodeBssidEntry(const HeardNetwork& heard, std::int64_t nowMs)
{
    const Octets elements = variableElements(heard.network);
    Bytes bytes = bytesOf(fixedPart(heard, elements.size(), nowMs));
    for (const std::uint8_t octet : elements)
        bytes.push_back(std::byte { octet });
    return bytes;
}
