#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

enum class ReplyVerdict {
    Success,
    Failure, // the service says no
    Malformed, // not a reply at all; its sender is not to be talked to any more
};

struct DriverReply {
    ReplyVerdict verdict { ReplyVerdict::Malformed };
    std::span<const std::byte> output; // within the packet; empty unless a success
};

// Takes a reply packet apart, whatever its bytes. replyCapacity is what the request offered, in bytes.
[[nodiscard]] DriverReply parseDriverReply(std::span<const std::byte> packet, std::uint32_t replyCapacity);
