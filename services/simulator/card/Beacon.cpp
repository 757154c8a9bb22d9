#include "services/simulator/card/Beacon.h"

#include "driver/records/ChannelTable.h"

#include <algorithm>

namespace {

constexpr std::uint16_t beaconIntervalKusec = 100;
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

// Suite types of the OUI 00-50-F2
constexpr std::uint8_t suiteNone = 0;
constexpr std::uint8_t cipherTkip = 2;
constexpr std::uint8_t cipherCcmp = 4;
constexpr std::uint8_t akmEnterprise = 1;
constexpr std::uint8_t akmPsk = 2;

using Octets = std::vector<std::uint8_t>;

void appendElement(Octets& elements, std::uint8_t id, const Octets& content)
{
    elements.push_back(id);
    elements.push_back(static_cast<std::uint8_t>(content.size()));
    elements.insert(elements.end(), content.begin(), content.end());
}

std::uint8_t akmSuite(Security security)
{
    switch (security) {
    case Security::WpaPsk:
        return akmPsk;
    case Security::WpaEnterprise:
        return akmEnterprise;
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

// WPA 1: version, group cipher suite, one pairwise cipher suite, one AKM suite. WPA-None has no pairwise keys, so its
// pairwise suite is "none".
Octets wpaContent(const ScenarioNetwork& network)
{
    const std::uint8_t cipher = network.cipher == Cipher::Aes ? cipherCcmp : cipherTkip;
    const std::uint8_t pairwise = network.security == Security::WpaNone ? suiteNone : cipher;
    return {
        0x00, 0x50, 0xF2, 0x01, // OUI and type
        0x01, 0x00, // version
        0x00, 0x50, 0xF2, cipher, // group suite
        0x01, 0x00, // number of pairwise suites
        0x00, 0x50, 0xF2, pairwise, //
        0x01, 0x00, // number of AKM suites
        0x00, 0x50, 0xF2, akmSuite(network.security) //
    };
}

// The first four rates are basic rates.
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
    // The WPA element comes first: the utility advances by the length byte of an element without its two header bytes,
    // so it would find the WPA element after other elements only by luck.
    if (isWpa(network.security))
        appendElement(elements, elementVendor, wpaContent(network));

    appendElement(elements, elementSsid, network.hidden ? Octets {} : Octets(network.ssid.begin(), network.ssid.end()));

    // Rates that do not fit into the first element go into the extended one.
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

BssDescription beaconOf(const HeardNetwork& heard, std::int64_t nowMs)
{
    const ScenarioNetwork& network = heard.network;
    BssDescription bss;
    bss.bssid = network.bssid;
    if (!network.hidden)
        bss.ssid.assign(network.ssid.begin(), network.ssid.end());
    bss.rssiDbm = heard.signalDbm;
    bss.networkType = networkType(network);
    bss.frequencyKhz = frequencyOfChannel(network.channel);
    bss.beaconIntervalKusec = beaconIntervalKusec;
    bss.capabilities = capabilities(network);
    bss.timestampUs = static_cast<std::uint64_t>(nowMs) * 1000;
    bss.rates = markedRates(network);
    bss.elements = variableElements(network);
    return bss;
}
