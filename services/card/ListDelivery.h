#pragma once

#include "services/card/RecordBytes.h"

#include <cstddef>
#include <vector>

// Splits a scan result into the replies that deliver it: each an NDIS_802_11_BSSID_LIST with as many whole entries as
// fit into one reply.
class ListDelivery {
public:
    static constexpr std::size_t chunkBytes = 4096;

    // Starts a new delivery and returns its first chunk, which has no entries for an empty list. Entries that do not
    // fit into any chunk are skipped.
    [[nodiscard]] Bytes start(std::vector<Bytes> entries);
    // Empty once the whole list has been delivered.
    [[nodiscard]] Bytes next();

private:
    [[nodiscard]] Bytes takeChunk();

    std::vector<Bytes> m_entries;
    std::size_t m_delivered { 0 };
};
