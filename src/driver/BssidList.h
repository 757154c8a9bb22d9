#pragma once

#include "driver/records/NdisRecords.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

// Bounds-checked access to a scan result (NDIS_802_11_BSSID_LIST). The driver's counts and lengths are trusted, but no
// access leaves the buffer: bytes beyond its end read as zero.

// A view of one entry. The buffer must outlive the view and its entries must not move.
class BssidEntry {
public:
    BssidEntry(std::span<std::byte> buffer, std::size_t offset);

    // A copy of the fixed part.
    [[nodiscard]] WLAN_BSSID_EX fixedPart() const;

    // The bytes from an offset within the entry to the first zero byte or the end of the entry.
    [[nodiscard]] std::span<const std::byte> bytesUpToZero(std::size_t offset) const;

    // Integers at a byte offset from the start of the entry; the offset may exceed the entry's Length.
    [[nodiscard]] std::uint8_t byteAt(std::size_t offset) const;
    [[nodiscard]] std::uint16_t littleEndian16At(std::size_t offset) const;
    [[nodiscard]] std::uint32_t bigEndian32At(std::size_t offset) const;

    // Writes to the list's buffer. Does nothing unless the whole value lies within the entry's Length, because an access
    // point that announces too short an element could otherwise change the Length of the next entry.
    void setLittleEndian16At(std::size_t offset, std::uint16_t value);

private:
    std::span<std::byte> m_buffer;
    std::size_t m_offset;
};

// Iterates over a list, advancing by the Length of each entry. Stops after NumberOfItems entries, at a zero Length and
// at an entry that does not fit in the buffer.
class BssidListWalk {
public:
    explicit BssidListWalk(std::span<std::byte> buffer);

    [[nodiscard]] std::optional<BssidEntry> next();

private:
    std::span<std::byte> m_buffer;
    std::size_t m_offset { sizeof(NDIS_802_11_BSSID_LIST) };
    std::uint32_t m_remaining { 0 };
};

// The list in G_pBssidList; empty before the first scan.
[[nodiscard]] std::span<std::byte> currentBssidList();

// NumberOfItems as the driver sent it; 0 if the buffer is too short to hold it.
[[nodiscard]] std::uint32_t bssidCount(std::span<const std::byte> list);

// The entry at a 0-based index; std::nullopt if the list ends before it.
[[nodiscard]] std::optional<BssidEntry> bssidEntryAt(std::span<std::byte> list, std::uint32_t index);

struct BssidChunkResult {
    std::uint32_t appended { 0 }; // entries
    bool listIsFull { false }; // an entry did not fit, so the caller must not append any more
};

// Appends the entries of a chunk to the list and adds their number to the list's count, which saturates. Stops at an
// entry that is truncated by the end of the chunk or does not fit in the list.
[[nodiscard]] BssidChunkResult appendBssidChunk(std::span<std::byte> list, std::span<const std::byte> chunk);
