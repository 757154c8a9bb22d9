#pragma once

#include "platform/registry/DriverMessages.h"
#include "posix/FileDescriptor.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

// A connection to a driver service: requests and replies alternate, each with a deadline. A malformed or missing reply
// closes the connection; later requests then fail immediately.
class UserClient {
public:
    using Deadline = std::chrono::steady_clock::time_point;

    // Size of the largest packet that a service may send.
    static constexpr std::size_t maxPacketSize = sizeof(DriverReplyHeader) + maxTransferSize;

    // Connects; waits until the deadline while the service has a full connection queue. isConnected() has the result.
    UserClient(const FileDescriptor& instance, Deadline deadline);

    [[nodiscard]] bool isConnected() const { return static_cast<bool>(m_socket); }

    // Returns the output, a part of packetBuffer, or std::nullopt if the call failed. The sizes in the header must not
    // exceed maxTransferSize, and inputSize must be the size of the input.
    [[nodiscard]] std::optional<std::span<const std::byte>> request(const DriverRequestHeader& header,
        std::span<const std::byte> input, std::span<std::byte, maxPacketSize> packetBuffer, Deadline deadline);

private:
    [[nodiscard]] bool send(const DriverRequestHeader& header, std::span<const std::byte> input, Deadline deadline);
    // std::nullopt at the end of the connection, at the deadline or for a packet that exceeds the buffer.
    [[nodiscard]] std::optional<std::span<const std::byte>> receive(
        std::span<std::byte, maxPacketSize> packetBuffer, Deadline deadline);

    FileDescriptor m_socket;
};
