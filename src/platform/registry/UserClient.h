#pragma once

#include "platform/registry/DriverMessages.h"
#include "posix/FileDescriptor.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

// A connection to a driver service: requests and replies alternate, each bounded by a deadline. A reply that is
// malformed or does not come in time ends the connection, and what is asked of it then fails at once.
class UserClient {
public:
    using Deadline = std::chrono::steady_clock::time_point;

    // Room for the largest packet that a service may send.
    static constexpr std::size_t packetRoom = sizeof(DriverReplyHeader) + largestTransfer;

    // Waits until the deadline for a service whose queue of connections is full. See isConnected() for the result.
    UserClient(const FileDescriptor& instance, Deadline deadline);

    [[nodiscard]] bool isConnected() const { return static_cast<bool>(m_socket); }

    // The output, which lies in packetBuffer; none when the call failed. The header's sizes are at most
    // largestTransfer and its inputSize is that of the input.
    [[nodiscard]] std::optional<std::span<const std::byte>> request(const DriverRequestHeader& header,
        std::span<const std::byte> input, std::span<std::byte, packetRoom> packetBuffer, Deadline deadline);

private:
    [[nodiscard]] bool send(const DriverRequestHeader& header, std::span<const std::byte> input, Deadline deadline);
    // The packet's bytes; none at the end of the connection, at the deadline or when the packet has more than fit.
    [[nodiscard]] std::optional<std::span<const std::byte>> receive(
        std::span<std::byte, packetRoom> packetBuffer, Deadline deadline);

    FileDescriptor m_socket;
};
