#pragma once

#include "services/card/CardSettings.h"
#include "services/card/RecordBytes.h"

#include <cstdint>
#include <optional>
#include <span>

// The sets that only store a value, keys included, and the queries that read it back, keys excluded. Both return
// std::nullopt for any other OID. oid does not contain the set flag.

// Returns false and changes nothing for an input that is not exactly the size of the record, and for an invalid value.
[[nodiscard]] std::optional<bool> storeSetting(
    CardSettings& settings, std::uint32_t oid, std::span<const std::byte> input, bool supportsFiveGhz);

[[nodiscard]] std::optional<Bytes> storedSetting(const CardSettings& settings, std::uint32_t oid);
