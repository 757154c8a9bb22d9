#include "services/simulator/service/ListFaults.h"

#include "services/simulator/card/Beacon.h"

#include <cstring>

namespace {

constexpr std::uint32_t hugeLength = 0xFFFFFFF0U;
constexpr std::uint32_t lyingCount = 1'000'000;
constexpr std::uint32_t elementBytesPastEnd = 60'000;
constexpr std::size_t firstEntry = sizeof(NDIS_802_11_BSSID_LIST);
constexpr std::size_t firstElementLengthByte = firstEntry + sizeof(WLAN_BSSID_EX) + 1;

Bytes chunkOfOne()
{
    HeardNetwork heard;
    heard.network.ssid = "spoiled";
    heard.network.bssid = { 0x02, 0xBA, 0xD0, 0xBA, 0xD0, 0x01 };
    heard.network.security = Security::WpaPsk;
    heard.signalDbm = heard.network.signalDbm;
    Bytes chunk = bytesOf(NDIS_802_11_BSSID_LIST { 1 });
    const Bytes entry = encodeBssidEntry(beaconOf(heard, 0));
    chunk.insert(chunk.end(), entry.begin(), entry.end());
    return chunk;
}

void putAt(Bytes& chunk, std::size_t offset, std::uint32_t value)
{
    std::memcpy(chunk.data() + offset, &value, sizeof(value));
}

} // namespace

Bytes spoiledChunk(const Bytes& chunk, FaultKind kind)
{
    Bytes spoiled = chunk.size() > firstElementLengthByte ? chunk : chunkOfOne();
    switch (kind) {
    case FaultKind::ListZeroLength:
        putAt(spoiled, firstEntry + offsetof(WLAN_BSSID_EX, Length), 0);
        break;
    case FaultKind::ListHugeLength:
        putAt(spoiled, firstEntry + offsetof(WLAN_BSSID_EX, Length), hugeLength);
        break;
    case FaultKind::ListLyingCount:
        putAt(spoiled, 0, lyingCount);
        break;
    case FaultKind::ListElementsPastEnd:
        putAt(spoiled, firstEntry + offsetof(WLAN_BSSID_EX, IELength), elementBytesPastEnd);
        spoiled[firstElementLengthByte] = std::byte { 0xFF };
        break;
    default: // ListEndless needs only a chunk that has an entry
        break;
    }
    return spoiled;
}
