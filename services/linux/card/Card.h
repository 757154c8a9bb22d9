#pragma once

#include "services/card/RecordBytes.h"
#include "services/linux/card/CardEffects.h"
#include "services/linux/card/CardState.h"

#include <cstdint>
#include <optional>
#include <span>

struct CardReply {
    bool accepted { false };
    Bytes output; // empty for sets and refused requests
    Effects effects;
};

// A wireless interface as a card of the driver interface (docs/driver-protocol.md). The only place that changes its
// state: requests of the client, and facts from the kernel and the supplicant. Nothing here waits for anything. Times
// are milliseconds of a monotonic clock.
class Card {
public:
    // A client that waits for the ready flag must not wait for ever, although the supplicant may never come back.
    static constexpr std::int64_t maxNotReadyMs = 5000;
    // Time for the client to apply its profile again before the card restores the last join itself.
    static constexpr std::int64_t restoreDelayMs = 5000;
    // A join comes first: scans wait until it has ended, but not longer than this.
    static constexpr std::int64_t joinHeadStartMs = 3000;
    // Listening for hidden networks can wait longer: during a scan the interface misses the answers of the access point.
    static constexpr std::int64_t listenHeadStartMs = 20'000;
    // The supplicant pauses for 5 s after each search. For this long after a request it is told to search again at once,
    // because a single search easily misses a hidden network.
    static constexpr std::int64_t urgentSearchMs = 8000;
    static constexpr std::int64_t maxScanMs = 10'000;
    // How often a scan is tried before it is given up.
    static constexpr int maxScanTries = 20;
    // Wait this long before bringing the interface up again: the program that took it down may not be finished (renaming
    // it, for example).
    static constexpr std::int64_t bringUpDelayMs = 2000;

    // An interface that comes back after a short absence raises the event flag, in case the client did not notice.
    Card(const CardHardware& hardware, bool isReturning, std::int64_t nowMs);

    // One structure call: the OID with or without the set flag, the client's buffer, the reply capacity in bytes.
    [[nodiscard]] CardReply answer(
        std::uint32_t oid, std::span<const std::byte> input, std::uint32_t replyCapacity, std::int64_t nowMs);

    [[nodiscard]] Effects wiphyRead(const WiphyFacts& wiphy, std::int64_t nowMs);
    [[nodiscard]] Effects radioSwitched(bool isSoftBlocked, bool isHardBlocked, std::int64_t nowMs);
    // The kernel leaves the interface down when its radio has been off, and any program may take it down.
    void interfaceRead(bool isUp, std::int64_t nowMs);
    void interfaceCountersRead(const InterfaceCounters& counters) { m_state.counters.follow(counters); }
    void stationsRead(const std::vector<StationInfo>& stations);
    void noiseRead(std::optional<std::int32_t> noiseDbm);
    void duplicatesRead(std::uint64_t duplicates) { m_state.counters.followDuplicates(duplicates); }

    // The kernel's scan result, after a scan of these frequencies, or without one.
    [[nodiscard]] Effects scanRead(
        std::vector<ScanEntry> entries, const std::vector<std::uint32_t>& frequenciesMhz, std::int64_t nowMs);
    // The kernel refused or aborted the scan, for a passing reason (another scan) or for good.
    [[nodiscard]] Effects scanFailed(bool isPassing, std::int64_t nowMs);

    [[nodiscard]] Effects supplicantReady(std::int64_t nowMs);
    void supplicantLost(std::int64_t nowMs);
    [[nodiscard]] Effects linkUp(const SupplicantStatus& status, std::int64_t nowMs);
    void linkDown() { m_state.dropLink(); }
    // Whether the supplicant's state contradicts the card's: an event was lost.
    [[nodiscard]] bool isNews(const SupplicantStatus& status) const;
    [[nodiscard]] Effects networkNotFound(std::int64_t nowMs);
    void resumed();

    // Does what has become due. Call it when nextDueMs() has passed.
    [[nodiscard]] Effects timePassed(std::int64_t nowMs);
    [[nodiscard]] std::optional<std::int64_t> nextDueMs() const;

    [[nodiscard]] const CardState& state() const { return m_state; }

private:
    [[nodiscard]] Effects nextScan(std::int64_t nowMs);
    [[nodiscard]] Effects restore(std::int64_t nowMs);
    [[nodiscard]] Effects radioSettings() const;

    CardState m_state;
    std::optional<std::int64_t> m_scanDueMs; // a batch waits until then
    int m_scanTries { 0 };
    std::optional<std::int64_t> m_bringUpDueMs;
};
