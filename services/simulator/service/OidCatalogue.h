#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

// The OIDs of the driver interface by name.

// The name of an OID, with or without the set flag; empty for an unknown one.
[[nodiscard]] std::string_view nameOfOid(std::uint32_t oid);

// Parses an OID given by name or by number (decimal, or hexadecimal with 0x) and removes the set flag. Returns
// std::nullopt for any other text.
[[nodiscard]] std::optional<std::uint32_t> oidFromText(std::string_view text);
