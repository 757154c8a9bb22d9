#include "services/card/ListDelivery.h"

#include "driver/records/NdisRecords.h"

#include <utility>

namespace {

constexpr std::size_t maxEntryBytes = ListDelivery::chunkBytes - sizeof(NDIS_802_11_BSSID_LIST);

} // namespace

Bytes ListDelivery::start(std::vector<Bytes> entries)
{
    m_entries = std::move(entries);
    // An entry that never fits would make the client ask for continuations forever.
    std::erase_if(m_entries, [](const Bytes& entry) { return entry.size() > maxEntryBytes; });
    m_delivered = 0;
    return takeChunk();
}

Bytes ListDelivery::next()
{
    return m_delivered < m_entries.size() ? takeChunk() : Bytes {};
}

Bytes ListDelivery::takeChunk()
{
    NDIS_802_11_BSSID_LIST head { 0 };
    Bytes chunk = bytesOf(head);
    while (m_delivered < m_entries.size() && chunk.size() + m_entries[m_delivered].size() <= chunkBytes) {
        const Bytes& entry = m_entries[m_delivered++];
        chunk.insert(chunk.end(), entry.begin(), entry.end());
        ++head.NumberOfItems;
    }
    std::memcpy(chunk.data(), &head, sizeof(head));
    return chunk;
}
