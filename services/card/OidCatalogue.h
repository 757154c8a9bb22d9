#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

// The numbers of the driver interface by name, for people and for scripts.

struct OidName {
    std::uint32_t oid; // without the set flag
    std::string_view name;
};

[[nodiscard]] std::span<const OidName> oidNames();

// The name of an OID, with or without the set flag; empty for an unknown one.
[[nodiscard]] std::string_view nameOfOid(std::uint32_t oid);

// An OID, the set flag taken off, from its name or its number (decimal, or hexadecimal with 0x). Nothing for a text
// that is neither.
[[nodiscard]] std::optional<std::uint32_t> oidFromText(std::string_view text);
