#pragma once

#include "services/linux/wire/Nl80211Values.h"

#include <cstdint>
#include <map>
#include <vector>

struct ScanBatch {
    std::vector<std::uint32_t> frequenciesMhz;
    bool isListening { false }; // waits for beacons instead of asking the networks to answer
};

// Divides a scan into batches. The client reads the list 2 s after its request, but scanning every channel takes up to
// 14 s. So the first batch fits into that time, and the others follow while the client already uses the list. The order
// of channels is longest unscanned first; a channel with known networks counts as scanned 10 s earlier.
//
// A hidden network does not answer, and a beacon falls into the short time of an active scan only by luck. So channels
// with a known one are listened to instead, and every other channel is listened to in addition, counting as scanned 10 s
// later than it was.
class ScanPlan {
public:
    static constexpr std::int64_t batchMs = 1600;
    // While the card is linked, a channel is additionally listened to only once in this time: listening holds up the
    // link's traffic.
    static constexpr std::int64_t listenPauseMs = 60'000;

    struct Known {
        std::vector<std::uint32_t> frequenciesMhz; // of listed networks
        std::vector<std::uint32_t> hiddenMhz; // of listed networks without a name
    };

    // Starts over with these channels.
    void start(const std::vector<ChannelFacts>& channels, const Known& known, bool isLinked, std::int64_t nowMs);
    void cancel() { m_pending.clear(); }
    [[nodiscard]] bool isDone() const { return m_pending.empty(); }
    // Whether only the additional listening for hidden networks is next.
    [[nodiscard]] bool isNextAdditional() const { return !m_pending.empty() && m_pending.front().isAdditional; }
    // What to scan next; no frequencies if nothing is left. They stay pending until scanned() names them.
    [[nodiscard]] ScanBatch batch();
    // The batch was refused or aborted.
    void failed() { m_isListening = false; }
    // Also for scans that others have made.
    void scanned(const std::vector<std::uint32_t>& frequenciesMhz, std::int64_t nowMs);

private:
    struct Pending {
        std::uint32_t frequencyMhz;
        std::int64_t costMs;
        std::int64_t dueMs; // those due first are scanned first
        bool isListening;
        bool isAdditional;
    };

    void addAdditional(const ChannelFacts& channel, bool isLinked, std::int64_t nowMs);

    std::vector<Pending> m_pending;
    bool m_isListening { false }; // the current batch
    std::map<std::uint32_t, std::int64_t> m_lastScanMs;
    std::map<std::uint32_t, std::int64_t> m_lastListenMs;
};
