#pragma once

#include "services/card/RecordBytes.h"
#include "services/linux/wire/Nl80211Values.h"

#include <cstdint>
#include <vector>

struct ListedNetwork {
    ScanEntry entry;
    std::int64_t seenMs { 0 }; // of the monotonic clock
    std::int32_t scansMissed { 0 };
};

// The networks around the interface, collected from the kernel's scan results. The kernel forgets a network after 30 s;
// the list keeps it until several scans of its channel have missed it, because a single scan easily misses one.
class NetworkList {
public:
    static constexpr std::int32_t scansUntilForgotten = 3;
    // For channels that are no longer scanned.
    static constexpr std::int64_t maxAgeMs = 60'000;
    // Reported for the cell that the interface created itself, whose signal the kernel does not know.
    static constexpr std::int32_t ownCellSignalDbm = -50;

    // Adds and renews networks. Those on channels that the driver interface has no number for are left out, except the one
    // that the card is linked to.
    void update(std::vector<ScanEntry> entries, std::int64_t nowMs);
    // Ages the networks on these frequencies that were not seen since the scan started.
    void scanEnded(const std::vector<std::uint32_t>& frequenciesMhz, std::int64_t startMs, std::int64_t nowMs);
    // Removes the networks on other frequencies, except the one that the card is linked to.
    void retain(const std::vector<std::uint32_t>& frequenciesMhz);
    // The card is linked to none of them any more.
    void linkDropped();
    void clear() { m_networks.clear(); }

    // In the order in which they were first seen.
    [[nodiscard]] const std::vector<ListedNetwork>& networks() const { return m_networks; }
    [[nodiscard]] const ScanEntry* find(const MacAddress& bssid) const;
    [[nodiscard]] std::vector<const ScanEntry*> named(const Octets& ssid) const;
    // One WLAN_BSSID_EX with its elements for each network. Leaves out the weakest ones if the client's buffer of 65,536
    // bytes has no room for all, but never the one that the card is linked to.
    [[nodiscard]] std::vector<Bytes> encoded() const;

private:
    void renew(ScanEntry entry, std::int64_t nowMs);

    std::vector<ListedNetwork> m_networks;
};

// The nearest frequency that the driver interface has a channel number for. An access point may move a link to a channel
// without one, and the client does not accept other frequencies.
[[nodiscard]] std::uint32_t numberedFrequencyMhz(std::uint32_t frequencyMhz);
