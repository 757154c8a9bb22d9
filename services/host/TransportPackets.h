#pragma once

#include "services/host/ServiceHost.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

// The packets of the driver transport; integers are in host byte order, nothing is padded.

inline constexpr std::size_t maxPayloadBytes = 65'536;
inline constexpr std::size_t requestHeaderBytes = 16; // kind, selector, input size, reply capacity
inline constexpr std::size_t replyHeaderBytes = 8; // result, output size

// Returns std::nullopt for a malformed request: a short header, an unknown kind, an input size that disagrees with the
// packet, a size or capacity above the maximum, or a non-zero size or capacity for open and scalar calls.
[[nodiscard]] std::optional<ServiceRequest> parseRequest(std::span<const std::byte> packet);

// Truncates output to the capacity, and drops it if the result is a failure.
[[nodiscard]] std::vector<std::byte> makeReply(
    std::uint32_t result, std::span<const std::byte> output, std::uint32_t replyCapacity);

// Whether a reply packet has a complete header with result 0.
[[nodiscard]] bool isSuccessReply(std::span<const std::byte> packet);
