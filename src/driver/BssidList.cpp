#include "driver/BssidList.h"

#include "app/shared/SharedState.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace {

// Bytes beyond the buffer read as zero.
template <typename Record> Record readAt(std::span<const std::byte> buffer, std::size_t offset)
{
    Record record {};
    if (offset < buffer.size())
        std::memcpy(&record, buffer.data() + offset, std::min(sizeof(Record), buffer.size() - offset));
    return record;
}

// The Length of the entry at this offset, or 0 if the entry does not fit in the buffer.
std::size_t entryLengthAt(std::span<const std::byte> buffer, std::size_t offset)
{
    const std::size_t length = readAt<std::uint32_t>(buffer, offset);
    return offset <= buffer.size() && length <= buffer.size() - offset ? length : 0;
}

// The offset at which to append an entry. Takes one step more than NumberOfItems: in a well-formed list the last step
// reaches the zero word after the list and does not move.
std::size_t endOfList(std::span<const std::byte> list)
{
    std::size_t offset = sizeof(NDIS_802_11_BSSID_LIST);
    for (std::uint64_t steps = std::uint64_t { bssidCount(list) } + 1; steps > 0; --steps) {
        const std::size_t length = entryLengthAt(list, offset);
        if (length == 0)
            break;
        offset += length;
    }
    return offset;
}

// Saturates: a wrong count from the driver may be at its maximum, and wrapping would hide existing entries.
void addToCount(std::span<std::byte> list, std::uint32_t added)
{
    const std::uint32_t count = bssidCount(list);
    const NDIS_802_11_BSSID_LIST head { count + std::min(added, std::numeric_limits<std::uint32_t>::max() - count) };
    if (list.size() >= sizeof(head))
        std::memcpy(list.data(), &head, sizeof(head));
}

} // namespace

BssidEntry::BssidEntry(std::span<std::byte> buffer, std::size_t offset)
    : m_buffer(buffer)
    , m_offset(offset)
{
}

WLAN_BSSID_EX BssidEntry::fixedPart() const
{
    return readAt<WLAN_BSSID_EX>(m_buffer, m_offset);
}

std::span<const std::byte> BssidEntry::bytesUpToZero(std::size_t offset) const
{
    const std::size_t length = entryLengthAt(m_buffer, m_offset);
    if (offset >= length)
        return {};
    const auto rest = m_buffer.subspan(m_offset + offset, length - offset);
    const auto zero = std::find(rest.begin(), rest.end(), std::byte { 0 });
    return rest.first(static_cast<std::size_t>(zero - rest.begin()));
}

std::uint8_t BssidEntry::byteAt(std::size_t offset) const
{
    return readAt<std::uint8_t>(m_buffer, m_offset + offset);
}

std::uint16_t BssidEntry::littleEndian16At(std::size_t offset) const
{
    return static_cast<std::uint16_t>(byteAt(offset) | byteAt(offset + 1) << 8);
}

std::uint32_t BssidEntry::bigEndian32At(std::size_t offset) const
{
    std::uint32_t value = 0;
    for (std::size_t place = 0; place < 4; ++place)
        value = value << 8 | byteAt(offset + place);
    return value;
}

void BssidEntry::setLittleEndian16At(std::size_t offset, std::uint16_t value)
{
    const std::size_t length = entryLengthAt(m_buffer, m_offset);
    if (length < sizeof(value) || offset > length - sizeof(value))
        return;
    const std::size_t place = m_offset + offset;
    m_buffer[place] = static_cast<std::byte>(value & 0xFF);
    m_buffer[place + 1] = static_cast<std::byte>(value >> 8);
}

BssidListWalk::BssidListWalk(std::span<std::byte> buffer)
    : m_buffer(buffer)
    , m_remaining(bssidCount(buffer))
{
}

std::optional<BssidEntry> BssidListWalk::next()
{
    if (m_remaining == 0)
        return std::nullopt;
    const std::size_t length = entryLengthAt(m_buffer, m_offset);
    if (length == 0) {
        m_remaining = 0;
        return std::nullopt;
    }
    const BssidEntry entry(m_buffer, m_offset);
    m_offset += length;
    --m_remaining;
    return entry;
}

std::span<std::byte> currentBssidList()
{
    return G_pBssidList ? std::span<std::byte>(*G_pBssidList) : std::span<std::byte> {};
}

std::uint32_t bssidCount(std::span<const std::byte> list)
{
    return list.size() < sizeof(NDIS_802_11_BSSID_LIST) ? 0 : readAt<NDIS_802_11_BSSID_LIST>(list, 0).NumberOfItems;
}

std::optional<BssidEntry> bssidEntryAt(std::span<std::byte> list, std::uint32_t index)
{
    BssidListWalk walk(list);
    std::optional<BssidEntry> entry = walk.next();
    for (; entry && index > 0; --index)
        entry = walk.next();
    return entry;
}

BssidChunkResult appendBssidChunk(std::span<std::byte> list, std::span<const std::byte> chunk)
{
    BssidChunkResult result;
    std::size_t end = endOfList(list);
    std::size_t source = sizeof(NDIS_802_11_BSSID_LIST);
    for (std::uint32_t remaining = bssidCount(chunk); remaining > 0; --remaining) {
        const std::size_t length = entryLengthAt(chunk, source);
        if (length == 0)
            break;
        result.listIsFull = end > list.size() || length > list.size() - end;
        if (result.listIsFull)
            break;
        std::memcpy(list.data() + end, chunk.data() + source, length);
        source += length;
        end += length;
        ++result.appended;
    }
    addToCount(list, result.appended);
    return result;
}
