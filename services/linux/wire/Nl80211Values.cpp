#include "services/linux/wire/Nl80211Values.h"

#include "services/linux/wire/NetlinkAttributes.h"

#include <algorithm>

#include <linux/nl80211.h>

namespace {

template <typename Number, typename Field> void readNumber(Attributes payload, Field& field)
{
    if (const auto number = numberIn<Number>(payload))
        field = static_cast<Field>(*number);
}

template <typename Number, typename Field> void readNumber(Attributes payload, std::optional<Field>& field)
{
    if (const auto number = numberIn<Number>(payload))
        field = static_cast<Field>(*number);
}

void readAddress(Attributes payload, MacAddress& address)
{
    if (payload.size() == address.size())
        std::memcpy(address.data(), payload.data(), address.size());
}

Octets octetsIn(Attributes payload)
{
    Octets octets(payload.size());
    std::transform(payload.begin(), payload.end(), octets.begin(),
        [](std::byte byte) { return std::to_integer<std::uint8_t>(byte); });
    return octets;
}

// Drivers that cannot measure dBm report 0 to 100; the scale is arbitrary.
constexpr std::int32_t dbmOfUnspecified(std::uint8_t strength)
{
    return std::min<std::int32_t>(strength, 100) / 2 - 100;
}

constexpr std::int32_t dbmOfMbm(std::int32_t mbm)
{
    return mbm / 100;
}

void readBss(ScanEntry& entry, std::uint16_t type, Attributes payload)
{
    switch (type) {
    case NL80211_BSS_BSSID:
        readAddress(payload, entry.bssid);
        break;
    case NL80211_BSS_FREQUENCY:
        readNumber<std::uint32_t>(payload, entry.frequencyMhz);
        break;
    case NL80211_BSS_TSF:
        readNumber<std::uint64_t>(payload, entry.timestampUs);
        break;
    case NL80211_BSS_BEACON_INTERVAL:
        readNumber<std::uint16_t>(payload, entry.beaconIntervalKusec);
        break;
    case NL80211_BSS_CAPABILITY:
        readNumber<std::uint16_t>(payload, entry.capabilities);
        break;
    case NL80211_BSS_SIGNAL_MBM:
        if (const auto mbm = numberIn<std::int32_t>(payload))
            entry.signalDbm = dbmOfMbm(*mbm);
        break;
    case NL80211_BSS_SIGNAL_UNSPEC:
        if (const auto strength = numberIn<std::uint8_t>(payload))
            entry.signalDbm = dbmOfUnspecified(*strength);
        break;
    case NL80211_BSS_SEEN_MS_AGO:
        readNumber<std::uint32_t>(payload, entry.ageMs);
        break;
    case NL80211_BSS_STATUS:
        entry.isAssociated = true;
        if (const auto status = numberIn<std::uint32_t>(payload))
            entry.isAssociated = *status == NL80211_BSS_STATUS_ASSOCIATED || *status == NL80211_BSS_STATUS_IBSS_JOINED;
        break;
    default:
        break;
    }
}

void readRate(StationInfo& info, Attributes rate)
{
    forEachAttribute(rate, [&info](std::uint16_t type, Attributes payload) {
        // The wide one is preferred: the narrow one is absent for fast rates.
        if (type == NL80211_RATE_INFO_BITRATE && info.transmitBitrate == 0)
            readNumber<std::uint16_t>(payload, info.transmitBitrate);
        else if (type == NL80211_RATE_INFO_BITRATE32)
            readNumber<std::uint32_t>(payload, info.transmitBitrate);
    });
}

void readStation(StationInfo& info, std::uint16_t type, Attributes payload)
{
    switch (type) {
    case NL80211_STA_INFO_SIGNAL:
        readNumber<std::int8_t>(payload, info.signalDbm);
        break;
    case NL80211_STA_INFO_TX_BITRATE:
        readRate(info, payload);
        break;
    case NL80211_STA_INFO_TX_PACKETS:
        readNumber<std::uint32_t>(payload, info.transmittedFrames);
        break;
    case NL80211_STA_INFO_TX_RETRIES:
        readNumber<std::uint32_t>(payload, info.transmitRetries);
        break;
    case NL80211_STA_INFO_TX_FAILED:
        readNumber<std::uint32_t>(payload, info.transmitFailures);
        break;
    case NL80211_STA_INFO_RX_PACKETS:
        readNumber<std::uint32_t>(payload, info.receivedFrames);
        break;
    default:
        break;
    }
}

ChannelFacts channelFacts(Attributes attributes)
{
    ChannelFacts channel;
    forEachAttribute(attributes, [&channel](std::uint16_t type, Attributes payload) {
        switch (type) {
        case NL80211_FREQUENCY_ATTR_FREQ:
            readNumber<std::uint32_t>(payload, channel.frequencyMhz);
            break;
        case NL80211_FREQUENCY_ATTR_MAX_TX_POWER:
            readNumber<std::int32_t>(payload, channel.maxPowerMbm);
            break;
        case NL80211_FREQUENCY_ATTR_DISABLED:
            channel.isDisabled = true;
            break;
        case NL80211_FREQUENCY_ATTR_NO_IR:
        case NL80211_FREQUENCY_ATTR_RADAR:
            channel.isPassive = true;
            break;
        default:
            break;
        }
    });
    return channel;
}

void addRates(std::vector<std::uint8_t>& rates, Attributes list)
{
    forEachAttribute(list, [&rates](std::uint16_t, Attributes rate) {
        const auto payload = findAttribute(rate, NL80211_BITRATE_ATTR_RATE);
        const auto hundredKbits = payload ? numberIn<std::uint32_t>(*payload) : std::nullopt;
        if (hundredKbits && *hundredKbits / 5 <= 0x7F)
            rates.push_back(static_cast<std::uint8_t>(*hundredKbits / 5));
    });
}

void addNewerRates(WiphyFacts::NewerRates& rates, Attributes band)
{
    rates.hasVht = rates.hasVht || findAttribute(band, NL80211_BAND_ATTR_VHT_MCS_SET);
    const auto types = findAttribute(band, NL80211_BAND_ATTR_IFTYPE_DATA);
    if (!types)
        return;
    forEachAttribute(*types, [&rates](std::uint16_t, Attributes data) {
        const auto served = findAttribute(data, NL80211_BAND_IFTYPE_ATTR_IFTYPES);
        const bool isForStations = served && findAttribute(*served, NL80211_IFTYPE_STATION);
        if (isForStations && findAttribute(data, NL80211_BAND_IFTYPE_ATTR_HE_CAP_MAC))
            rates.hasHe = true;
    });
}

void addBand(WiphyFacts& facts, std::uint16_t band, Attributes attributes)
{
    if (const auto channels = findAttribute(attributes, NL80211_BAND_ATTR_FREQS)) {
        forEachAttribute(*channels, [&facts](std::uint16_t, Attributes channel) {
            facts.channels.push_back(channelFacts(channel));
            if (facts.channels.back().frequencyMhz == 0)
                facts.channels.pop_back();
        });
    }
    if (band == NL80211_BAND_2GHZ)
        addNewerRates(facts.twoGhzNewer, attributes);
    else if (band == NL80211_BAND_5GHZ)
        addNewerRates(facts.fiveGhzNewer, attributes);
    const auto rates = findAttribute(attributes, NL80211_BAND_ATTR_RATES);
    if (rates && band == NL80211_BAND_2GHZ)
        addRates(facts.twoGhzRates, *rates);
    if (rates && band == NL80211_BAND_5GHZ)
        addRates(facts.fiveGhzRates, *rates);
}

std::optional<std::uint32_t> numberAttribute(Attributes attributes, std::uint16_t type)
{
    const auto payload = findAttribute(attributes, type);
    return payload ? numberIn<std::uint32_t>(*payload) : std::nullopt;
}

} // namespace

std::optional<ScanEntry> scanEntry(Attributes attributes)
{
    const auto bss = findAttribute(attributes, NL80211_ATTR_BSS);
    if (!bss)
        return std::nullopt;
    ScanEntry entry;
    forEachAttribute(*bss, [&entry](std::uint16_t type, Attributes payload) { readBss(entry, type, payload); });
    auto elements = findAttribute(*bss, NL80211_BSS_INFORMATION_ELEMENTS);
    if (!elements)
        elements = findAttribute(*bss, NL80211_BSS_BEACON_IES);
    if (elements)
        entry.elements = octetsIn(*elements);
    const bool isComplete = entry.bssid != MacAddress {} && entry.frequencyMhz != 0;
    return isComplete ? std::optional(entry) : std::nullopt;
}

std::optional<StationInfo> stationInfo(Attributes attributes)
{
    const auto nested = findAttribute(attributes, NL80211_ATTR_STA_INFO);
    if (!nested)
        return std::nullopt;
    StationInfo info;
    if (const auto address = findAttribute(attributes, NL80211_ATTR_MAC))
        readAddress(*address, info.address);
    forEachAttribute(*nested, [&info](std::uint16_t type, Attributes payload) { readStation(info, type, payload); });
    return info;
}

void addWiphy(WiphyFacts& facts, Attributes attributes)
{
    if (const auto payload = findAttribute(attributes, NL80211_ATTR_MAX_NUM_SCAN_SSIDS))
        readNumber<std::uint8_t>(*payload, facts.maxScanSsids);
    if (const auto bands = findAttribute(attributes, NL80211_ATTR_WIPHY_BANDS))
        forEachAttribute(*bands, [&facts](std::uint16_t band, Attributes payload) { addBand(facts, band, payload); });
}

std::optional<InterfaceFacts> interfaceFacts(Attributes attributes)
{
    InterfaceFacts facts;
    const auto index = interfaceIndex(attributes);
    const auto name = findAttribute(attributes, NL80211_ATTR_IFNAME);
    if (!index || !name)
        return std::nullopt;
    facts.index = *index;
    facts.name = textIn(*name);
    facts.wiphy = wiphyIndex(attributes).value_or(0);
    facts.type = numberAttribute(attributes, NL80211_ATTR_IFTYPE).value_or(NL80211_IFTYPE_UNSPECIFIED);
    return facts;
}

std::optional<SurveyFacts> surveyFacts(Attributes attributes)
{
    const auto nested = findAttribute(attributes, NL80211_ATTR_SURVEY_INFO);
    if (!nested)
        return std::nullopt;
    SurveyFacts facts;
    forEachAttribute(*nested, [&facts](std::uint16_t type, Attributes payload) {
        if (type == NL80211_SURVEY_INFO_FREQUENCY)
            readNumber<std::uint32_t>(payload, facts.frequencyMhz);
        else if (type == NL80211_SURVEY_INFO_NOISE)
            readNumber<std::int8_t>(payload, facts.noiseDbm);
        else if (type == NL80211_SURVEY_INFO_IN_USE)
            facts.isInUse = true;
    });
    return facts;
}

std::vector<std::uint32_t> scannedFrequencies(Attributes attributes)
{
    std::vector<std::uint32_t> frequencies;
    if (const auto list = findAttribute(attributes, NL80211_ATTR_SCAN_FREQUENCIES)) {
        forEachAttribute(*list, [&frequencies](std::uint16_t, Attributes payload) {
            if (const auto frequency = numberIn<std::uint32_t>(payload))
                frequencies.push_back(*frequency);
        });
    }
    return frequencies;
}

std::optional<std::uint32_t> interfaceIndex(Attributes attributes)
{
    return numberAttribute(attributes, NL80211_ATTR_IFINDEX);
}

std::optional<std::uint32_t> wiphyIndex(Attributes attributes)
{
    return numberAttribute(attributes, NL80211_ATTR_WIPHY);
}
