#pragma once

#include "services/card/RecordBytes.h"
#include "services/simulator/card/CardState.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

// Queries and sets of the driver interface (docs/driver-protocol.md), on a card that was advanced to the current time.

// The record that answers a query. std::nullopt if the card refuses: an unknown OID, an OID that can only be set, a
// reply capacity (bytes) below the size of the record, or a property of the link while the link is down.
[[nodiscard]] std::optional<Bytes> answerQuery(CardState& state, std::uint32_t oid, std::uint32_t replyCapacity);

// Returns false and changes nothing for an unknown OID, an OID that can only be queried, an input that is not exactly
// the size of the record, or an invalid value. oid does not contain the set flag.
[[nodiscard]] bool applySet(CardState& state, std::uint32_t oid, std::span<const std::byte> input);
