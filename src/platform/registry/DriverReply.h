#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

enum class ReplyStatus {
    Success,
    Failure, // the service reports an error
    Malformed, // not a valid reply; the connection must be closed
};

struct DriverReply {
    ReplyStatus status { ReplyStatus::Malformed };
    std::span<const std::byte> output; // part of the packet; empty unless successful
};

// Parses any packet. replyCapacity is the capacity in the request, in bytes.
[[nodiscard]] DriverReply parseDriverReply(std::span<const std::byte> packet, std::uint32_t replyCapacity);
