#pragma once

#include "services/card/RecordBytes.h"
#include "services/simulator/card/CardState.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

// One function per request of the driver interface (docs/driver-protocol.md), on a card whose time is up to date.

// The answer to a query, whose length is the record's; empty where the record is the empty one. Nothing when the card
// refuses: an unknown OID, one that can only be set, a reply capacity (bytes) below the record, or no link for what
// only a link has.
[[nodiscard]] std::optional<Bytes> answerQuery(CardState& state, std::uint32_t oid, std::uint32_t replyCapacity);

// False, with nothing changed, for an unknown OID, one that can only be queried, an input that is not exactly the
// record, and a value that no card takes. The set flag is not part of oid.
[[nodiscard]] bool applySet(CardState& state, std::uint32_t oid, std::span<const std::byte> input);
