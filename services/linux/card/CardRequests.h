#pragma once

#include "services/card/RecordBytes.h"
#include "services/linux/card/CardEffects.h"
#include "services/linux/card/CardState.h"

#include <cstdint>
#include <optional>
#include <span>

// Queries and sets of the driver interface (docs/driver-protocol.md). oid does not contain the set flag.

// The record that answers a query. std::nullopt if the card refuses: an unknown OID, an OID that can only be set, a
// reply capacity (bytes) below the size of the record, or a property of the link while the link is down.
[[nodiscard]] std::optional<Bytes> answerQuery(
    CardState& state, std::uint32_t oid, std::uint32_t replyCapacity, std::int64_t nowMs);

struct SetOutcome {
    bool accepted { false };
    bool startsScan { false };
    Effects effects;
};

// Refuses an unknown OID, an OID that can only be queried, an input that is not exactly the size of the record, an
// invalid value, and what the interface cannot do.
[[nodiscard]] SetOutcome applySet(
    CardState& state, std::uint32_t oid, std::span<const std::byte> input, std::int64_t nowMs);

// After a change of the wireless mode or of the regulatory domain: forgets networks on channels that are no longer allowed,
// and makes the join again elsewhere if the link is on one of them.
[[nodiscard]] Effects followAllowedChannels(CardState& state, std::int64_t nowMs);

// The effects that set rates, power, thresholds and power saving again: the kernel forgets them when the interface goes
// down, and limits them when the channel changes.
[[nodiscard]] Effects radioEffects(const CardState& state);

[[nodiscard]] SetTransmitPower transmitPowerEffect(const CardState& state);

// The driver's raw channel quality, 0 to 100; the utility shows 75 and above as a perfect link.
[[nodiscard]] std::uint32_t channelQuality(std::int32_t signalDbm, std::optional<std::int32_t> noiseDbm);
