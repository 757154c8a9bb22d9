#pragma once

#include "services/card/ListDelivery.h"
#include "services/simulator/card/Neighbourhood.h"

#include <cstdint>
#include <optional>
#include <vector>

// The networks that the card's scans have found, and their delivery to the client.
class ScanList {
public:
    static constexpr std::int64_t scanDurationMs = 1500;
    // A network missed by this many scans in a row leaves the list.
    static constexpr std::int32_t scansUntilForgotten = 3;

    // A request during a scan is served by that scan.
    void startScan(std::int64_t nowMs);
    [[nodiscard]] bool isScanDone(std::int64_t nowMs) const;
    // Ends a scan: renews the entries it has seen and ages the others.
    void finishScan(const std::vector<HeardNetwork>& seen);
    // The card hears the network it is associated with all the time, whatever the scans find.
    void keep(const HeardNetwork& associated);
    // Clears the list and cancels a running scan, as a card does when its radio is switched off.
    void forgetAll();

    [[nodiscard]] std::size_t size() const { return m_entries.size(); }

    // The list as it is now, in the order in which the networks were first seen. Further chunks carry the rest of that
    // same list, even if a scan ends in between.
    [[nodiscard]] Bytes firstChunk(std::int64_t nowMs);
    // Empty once the whole list has been delivered.
    [[nodiscard]] Bytes nextChunk() { return m_delivery.next(); }

private:
    struct Entry {
        HeardNetwork heard;
        std::int32_t scansMissed { 0 };
    };

    void renew(const HeardNetwork& heard);

    std::vector<Entry> m_entries;
    std::optional<std::int64_t> m_scanStartMs;
    ListDelivery m_delivery;
};
