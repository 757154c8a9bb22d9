#pragma once

#include <cstddef>
#include <cstring>
#include <optional>
#include <span>
#include <type_traits>
#include <vector>

// Driver records as the bytes of a request or a reply.

using Bytes = std::vector<std::byte>;

template <typename Record> [[nodiscard]] Bytes bytesOf(const Record& record)
{
    static_assert(std::is_trivially_copyable_v<Record>);
    Bytes bytes(sizeof(Record));
    std::memcpy(bytes.data(), &record, sizeof(Record));
    return bytes;
}

// The record at a byte offset; std::nullopt if it does not fit.
template <typename Record>
[[nodiscard]] std::optional<Record> recordAt(std::span<const std::byte> bytes, std::size_t offset = 0)
{
    static_assert(std::is_trivially_copyable_v<Record>);
    if (offset > bytes.size() || bytes.size() - offset < sizeof(Record))
        return std::nullopt;
    Record record {};
    std::memcpy(&record, bytes.data() + offset, sizeof(Record));
    return record;
}

// Returns std::nullopt unless the bytes are exactly the size of the record.
template <typename Record> [[nodiscard]] std::optional<Record> recordOf(std::span<const std::byte> bytes)
{
    return bytes.size() == sizeof(Record) ? recordAt<Record>(bytes) : std::nullopt;
}
