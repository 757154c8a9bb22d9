#include "services/simulator/card/ScanList.h"

#include "services/simulator/card/Beacon.h"

#include <algorithm>
#include <utility>

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
    std::vector<Bytes> entries;
    for (const Entry& entry : m_entries)
        entries.push_back(encodeBssidEntry(beaconOf(entry.heard, nowMs)));
    return m_delivery.start(std::move(entries));
}
