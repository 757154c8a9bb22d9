#pragma once

#include "services/linux/wire/Nl80211Values.h"

#include <cstdint>
#include <map>
#include <vector>

// Divides a scan into batches. The client reads the list 2 s after its request, but scanning every channel takes up to
// 14 s. So the first batch fits into that time, and the others follow while the client already uses the list. Channels
// come in the order in which they were last scanned, those with known networks earlier.
class ScanPlan {
public:
    static constexpr std::int64_t firstBatchMs = 1600;

    // Starts over with these channels; knownMhz are the frequencies of listed networks.
    void start(const std::vector<ChannelFacts>& channels, const std::vector<std::uint32_t>& knownMhz, bool isLinked);
    void cancel() { m_pending.clear(); }
    [[nodiscard]] bool isDone() const { return m_pending.empty(); }
    // The frequencies in MHz to scan next; empty if nothing is left. They stay pending until scanned() names them.
    [[nodiscard]] std::vector<std::uint32_t> batch() const;
    void scanned(const std::vector<std::uint32_t>& frequenciesMhz, std::int64_t nowMs);

private:
    struct Pending {
        std::uint32_t frequencyMhz;
        std::int64_t costMs;
    };

    std::vector<Pending> m_pending;
    std::map<std::uint32_t, std::int64_t> m_lastScanMs;
};
