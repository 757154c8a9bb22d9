#include "services/linux/card/NetworkList.h"

#include "driver/records/ChannelTable.h"
#include "services/card/BssidEncoder.h"
#include "services/linux/card/WirelessMode.h"
#include "services/linux/wire/SecurityElements.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace {

constexpr std::size_t clientBufferBytes = 65'536;

bool hasChannelNumber(const ScanEntry& entry)
{
    return channelOfFrequency(entry.frequencyMhz * 1000) != -1;
}

bool isNamed(const ScanEntry& entry)
{
    return !networkName(entry.elements).empty();
}

// The kernel keeps a hidden network twice, by its beacons without and by its probe responses with the name, and a
// network that has changed its channel too. The newer one describes the network, but a known name is kept.
ScanEntry merged(ScanEntry one, ScanEntry other)
{
    if (other.ageMs < one.ageMs)
        std::swap(one, other);
    if (!isNamed(one) && isNamed(other) && one.frequencyMhz == other.frequencyMhz)
        one.elements = other.elements;
    one.isAssociated = one.isAssociated || other.isAssociated;
    if (!one.signalDbm)
        one.signalDbm = other.signalDbm;
    return one;
}

std::vector<ScanEntry> withoutDuplicates(std::vector<ScanEntry> entries)
{
    std::vector<ScanEntry> unique;
    for (ScanEntry& entry : entries) {
        const auto known = std::find_if(
            unique.begin(), unique.end(), [&entry](const ScanEntry& other) { return other.bssid == entry.bssid; });
        if (known == unique.end())
            unique.push_back(std::move(entry));
        else
            *known = merged(std::move(*known), std::move(entry));
    }
    return unique;
}

BssDescription descriptionOf(const ScanEntry& entry)
{
    BssDescription bss;
    bss.bssid = entry.bssid;
    bss.ssid = networkName(entry.elements);
    bss.rssiDbm = entry.signalDbm.value_or(NetworkList::ownCellSignalDbm);
    bss.rates = announcedRates(entry.elements);
    bss.networkType = networkTypeOf(entry.frequencyMhz, bss.rates);
    bss.frequencyKhz = numberedFrequencyMhz(entry.frequencyMhz) * 1000;
    bss.beaconIntervalKusec = entry.beaconIntervalKusec;
    bss.atimWindowKusec = atimWindowKusec(entry.elements);
    bss.capabilities = entry.capabilities;
    bss.timestampUs = entry.timestampUs;
    bss.elements = listedElements(entry.elements);
    return bss;
}

} // namespace

void NetworkList::update(std::vector<ScanEntry> entries, std::int64_t nowMs)
{
    std::erase_if(entries, [](const ScanEntry& entry) { return !hasChannelNumber(entry) && !entry.isAssociated; });
    for (ScanEntry& entry : withoutDuplicates(std::move(entries)))
        renew(std::move(entry), nowMs);
}

void NetworkList::renew(ScanEntry entry, std::int64_t nowMs)
{
    const std::int64_t seenMs = nowMs - entry.ageMs;
    const auto known = std::find_if(m_networks.begin(), m_networks.end(),
        [&entry](const ListedNetwork& network) { return network.entry.bssid == entry.bssid; });
    if (known == m_networks.end()) {
        if (entry.ageMs < maxAgeMs)
            m_networks.push_back({ std::move(entry), seenMs, 0 });
        return;
    }
    if (seenMs > known->seenMs)
        known->scansMissed = 0;
    known->seenMs = std::max(known->seenMs, seenMs);
    known->entry = std::move(entry);
}

void NetworkList::scanEnded(const std::vector<std::uint32_t>& frequenciesMhz, std::int64_t startMs, std::int64_t nowMs)
{
    for (ListedNetwork& network : m_networks) {
        const bool wasScanned = std::find(frequenciesMhz.begin(), frequenciesMhz.end(), network.entry.frequencyMhz)
            != frequenciesMhz.end();
        if (wasScanned && network.seenMs < startMs)
            ++network.scansMissed;
    }
    std::erase_if(m_networks, [nowMs](const ListedNetwork& network) {
        const bool isGone = network.scansMissed >= scansUntilForgotten || nowMs - network.seenMs >= maxAgeMs;
        return isGone && !network.entry.isAssociated;
    });
}

void NetworkList::retain(const std::vector<std::uint32_t>& frequenciesMhz)
{
    std::erase_if(m_networks, [&frequenciesMhz](const ListedNetwork& network) {
        return !network.entry.isAssociated
            && std::find(frequenciesMhz.begin(), frequenciesMhz.end(), network.entry.frequencyMhz)
            == frequenciesMhz.end();
    });
}

void NetworkList::linkDropped()
{
    for (ListedNetwork& network : m_networks)
        network.entry.isAssociated = false;
    std::erase_if(m_networks, [](const ListedNetwork& network) { return !hasChannelNumber(network.entry); });
}

const ScanEntry* NetworkList::find(const MacAddress& bssid) const
{
    const auto found = std::find_if(m_networks.begin(), m_networks.end(),
        [&bssid](const ListedNetwork& network) { return network.entry.bssid == bssid; });
    return found == m_networks.end() ? nullptr : &found->entry;
}

std::vector<const ScanEntry*> NetworkList::named(const Octets& ssid) const
{
    std::vector<const ScanEntry*> found;
    for (const ListedNetwork& network : m_networks) {
        if (networkName(network.entry.elements) == ssid)
            found.push_back(&network.entry);
    }
    return found;
}

std::vector<Bytes> NetworkList::encoded() const
{
    std::vector<Bytes> records;
    for (const ListedNetwork& network : m_networks)
        records.push_back(encodeBssidEntry(descriptionOf(network.entry)));

    std::vector<std::size_t> byStrength(records.size());
    std::iota(byStrength.begin(), byStrength.end(), std::size_t { 0 });
    const auto rank = [this](std::size_t index) {
        const ScanEntry& entry = m_networks[index].entry;
        return std::pair(entry.isAssociated, entry.signalDbm.value_or(ownCellSignalDbm));
    };
    std::stable_sort(byStrength.begin(), byStrength.end(),
        [&rank](std::size_t one, std::size_t other) { return rank(one) > rank(other); });
    std::size_t total = sizeof(NDIS_802_11_BSSID_LIST);
    for (const std::size_t index : byStrength) {
        total += records[index].size();
        if (total > clientBufferBytes)
            records[index].clear();
    }
    std::erase_if(records, [](const Bytes& record) { return record.empty(); });
    return records;
}

std::uint32_t numberedFrequencyMhz(std::uint32_t frequencyMhz)
{
    const auto distance = [frequencyMhz](const ChannelFreq& row) {
        const std::uint32_t mhz = row.frequencyKhz / 1000;
        return mhz > frequencyMhz ? mhz - frequencyMhz : frequencyMhz - mhz;
    };
    const auto nearest = std::min_element(ChannelFreqTable.begin(), ChannelFreqTable.end(),
        [&distance](const ChannelFreq& one, const ChannelFreq& other) { return distance(one) < distance(other); });
    return nearest->frequencyKhz / 1000;
}
