#pragma once

#include "driver/records/NdisRecords.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

// Bounded reading of a scan result (NDIS_802_11_BSSID_LIST). The driver's counts and lengths are believed for what
// they say, yet no read or write leaves the buffer: a byte beyond its end reads as zero.

// One entry of a list, by its place in the list's buffer. Holds no copy: the buffer must outlive it unchanged.
class BssidEntry {
public:
    BssidEntry(std::span<std::byte> buffer, std::size_t offset);

    // The fixed part, copied out.
    [[nodiscard]] WLAN_BSSID_EX fixedPart() const;

    // The bytes from an offset within the entry up to the first zero byte, at most to the entry's end.
    [[nodiscard]] std::span<const std::byte> bytesUpToZero(std::size_t offset) const;

    // Integers at a byte offset within the entry, also past the entry's own Length.
    [[nodiscard]] std::uint8_t byteAt(std::size_t offset) const;
    [[nodiscard]] std::uint16_t littleEndian16At(std::size_t offset) const;
    [[nodiscard]] std::uint32_t bigEndian32At(std::size_t offset) const;

    // Writes into the list's buffer; a write that does not fit in whole is dropped.
    void setLittleEndian16At(std::size_t offset, std::uint16_t value);

private:
    std::span<std::byte> m_buffer;
    std::size_t m_offset;
};

// Walks a list from its first entry by each entry's own Length. The walk ends after NumberOfItems entries, at a zero
// Length, and at an entry that does not lie in the buffer as a whole.
class BssidListWalk {
public:
    explicit BssidListWalk(std::span<std::byte> buffer);

    [[nodiscard]] std::optional<BssidEntry> next();

private:
    std::span<std::byte> m_buffer;
    std::size_t m_offset { sizeof(NDIS_802_11_BSSID_LIST) };
    std::uint32_t m_remaining { 0 };
};

// The list that G_pBssidList holds; empty while there is none.
[[nodiscard]] std::span<std::byte> currentBssidList();

// NumberOfItems as the list states it; 0 for a buffer that cannot hold it.
[[nodiscard]] std::uint32_t bssidCount(std::span<const std::byte> list);

// The entry at a 0-based index; nothing when the walk ends before it.
[[nodiscard]] std::optional<BssidEntry> bssidEntryAt(std::span<std::byte> list, std::uint32_t index);

struct BssidChunkResult {
    std::uint32_t appended { 0 }; // entries
    bool listIsFull { false }; // an entry did not fit: the list ends before it, and nothing may follow
};

// Appends the entries of a further chunk behind the last entry of the list and adds their number to the list's count,
// which stays at its largest value instead of wrapping. An entry that is cut off by the chunk's end or would outgrow
// the list is left out, with all that follow it.
[[nodiscard]] BssidChunkResult appendBssidChunk(std::span<std::byte> list, std::span<const std::byte> chunk);
