#pragma once

#include "services/host/ServiceHost.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

// The packets of the driver transport; integers are in host byte order, nothing is padded.

inline constexpr std::size_t largestPayloadBytes = 65'536;
inline constexpr std::size_t requestHeaderBytes = 16; // kind, selector, input size, reply capacity
inline constexpr std::size_t replyHeaderBytes = 8; // result, output size

// Nothing for a packet that is no request: a short header, an unknown kind, an input size that disagrees with the
// packet, sizes or capacities above the largest, or other than 0 where nothing is carried.
[[nodiscard]] std::optional<ServiceRequest> parseRequest(std::span<const std::byte> packet);

// A failed result carries no output, and none goes beyond the capacity.
[[nodiscard]] std::vector<std::byte> makeReply(
    std::uint32_t result, std::span<const std::byte> output, std::uint32_t replyCapacity);

// Whether a packet is a reply that says success.
[[nodiscard]] bool isSuccessReply(std::span<const std::byte> packet);
