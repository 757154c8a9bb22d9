#include "services/simulator/card/ScanList.h"

#include "services/simulator/card/BssidEncoder.h"

#include <algorithm>
#include <cstring>

void ScanList::startScan(std::int64_t nowMs)
{
    if (!m_scanStartMs)
        m_scanStartMs = nowMs;
}

bool ScanList::isScanDone(std::int64_t nowMs) const
{
    return m_scanStartMs && nowMs - *m_scanStartMs >= scanDurationMs;
}

void ScanList::finishScan(const std::vector<HeardNetwork>& seen)
{
    m_scanStartMs.reset();
    for (Entry& entry : m_entries)
        ++entry.scansMissed;
    for (const HeardNetwork& heard : seen)
        renew(heard);
    std::erase_if(m_entries, [](const Entry& entry) { return entry.scansMissed >= scansUntilForgotten; });
}

void ScanList::keep(const HeardNetwork& associated)
{
    renew(associated);
}

void ScanList::forgetAll()
{
    m_entries.clear();
    m_scanStartMs.reset();
}

void ScanList::renew(const HeardNetwork& heard)
{
    const auto known = std::find_if(m_entries.begin(), m_entries.end(),
        [&heard](const Entry& entry) { return entry.heard.network.bssid == heard.network.bssid; });
    if (known == m_entries.end())
        m_entries.push_back({ heard, 0 });
    else
        *known = { heard, 0 };
}

Bytes ScanList::firstChunk(std::int64_t nowMs)
{
    m_delivery.clear();
    m_delivered = 0;
    for (const Entry& entry : m_entries)
        m_delivery.push_back(encodeBssidEntry(entry.heard, nowMs));
    return takeChunk();
}

Bytes ScanList::nextChunk()
{
    return m_delivered < m_delivery.size() ? takeChunk() : Bytes {};
}

Bytes ScanList::takeChunk()
{
    NDIS_802_11_BSSID_LIST head { 0 };
    Bytes chunk = bytesOf(head);
    while (m_delivered < m_delivery.size() && chunk.size() + m_delivery[m_delivered].size() <= chunkBytes) {
        const Bytes& entry = m_delivery[m_delivered++];
        chunk.insert(chunk.end(), entry.begin(), entry.end());
        ++head.NumberOfItems;
    }
    std::memcpy(chunk.data(), &head, sizeof(head));
    return chunk;
}
