#pragma once

#include "services/card/RecordBytes.h"
#include "services/simulator/card/Neighbourhood.h"

#include <cstdint>
#include <optional>
#include <vector>

// What the scans of the card have found, and its delivery in pieces.
class ScanList {
public:
    static constexpr std::int64_t scanDurationMs = 1500;
    // A network that this many scans in a row did not see is taken off the list.
    static constexpr std::int32_t scansUntilForgotten = 3;
    static constexpr std::size_t chunkBytes = 4096;

    // A request while a scan runs is part of that scan.
    void startScan(std::int64_t nowMs);
    [[nodiscard]] bool isScanDone(std::int64_t nowMs) const;
    // Ends a scan with what it has seen: seen entries are renewed, the others age.
    void finishScan(const std::vector<HeardNetwork>& seen);
    // The network that the card is associated with is heard all the time, whatever the scans say.
    void keep(const HeardNetwork& associated);
    // Empties the list and gives up a running scan, as a card does that loses its radio.
    void forgetAll();

    [[nodiscard]] std::size_t size() const { return m_entries.size(); }

    // The list as it is now, in the order in which the networks were first seen: an NDIS_802_11_BSSID_LIST with as
    // many whole entries as a chunk takes. Further chunks carry the rest of that same list.
    [[nodiscard]] Bytes firstChunk(std::int64_t nowMs);
    // Empty when the whole list was delivered.
    [[nodiscard]] Bytes nextChunk();

private:
    struct Entry {
        HeardNetwork heard;
        std::int32_t scansMissed { 0 };
    };

    void renew(const HeardNetwork& heard);
    [[nodiscard]] Bytes takeChunk();

    std::vector<Entry> m_entries;
    std::optional<std::int64_t> m_scanStartMs;
    std::vector<Bytes> m_delivery;
    std::size_t m_delivered { 0 };
};
