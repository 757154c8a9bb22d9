#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

// A network interface as route netlink describes it.

struct InterfaceCounters {
    std::uint64_t receivedFrames { 0 };
    std::uint64_t receivedBytes { 0 };
    std::uint64_t transmittedBytes { 0 };
    std::uint64_t framesWithoutBuffer { 0 }; // missed by the hardware or by its queue
};

struct LinkMessage {
    std::uint32_t index { 0 };
    std::string name;
    bool isUp { false };
    std::optional<InterfaceCounters> counters;
};

// Reads the body of an RTM_NEWLINK or RTM_DELLINK message; std::nullopt if it is too short.
[[nodiscard]] std::optional<LinkMessage> linkMessage(std::span<const std::byte> body);
