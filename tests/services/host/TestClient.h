#pragma once

#include "posix/FileDescriptor.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

using Bytes = std::vector<std::byte>;

[[nodiscard]] Bytes bytesOf(std::initializer_list<unsigned> octets);
[[nodiscard]] Bytes bytesOf(const std::string& text);
// A request packet with exactly these header words, valid or not.
[[nodiscard]] Bytes requestPacket(std::uint32_t kind, std::uint32_t selector, std::uint32_t inputSize,
    std::uint32_t replyCapacity, const Bytes& input = {});
[[nodiscard]] Bytes openPacket();
[[nodiscard]] Bytes callPacket(std::uint32_t selector, const Bytes& input, std::uint32_t replyCapacity);
[[nodiscard]] Bytes completionPacket();

struct TestReply {
    std::uint32_t result { 0 };
    std::uint32_t outputSize { 0 };
    Bytes output;
};

// Runs the event loop until the condition holds; returns false after a timeout.
[[nodiscard]] bool pumpUntil(const std::function<bool()>& condition);
// Handles all pending events.
void pump();

// A client in the thread of the host; it runs the event loop while it waits.
class TestClient {
public:
    // The path may be longer than a socket address. Not connected if no service listens there.
    explicit TestClient(const std::string& path);

    [[nodiscard]] bool isConnected() const { return static_cast<bool>(m_socket); }
    [[nodiscard]] bool send(const Bytes& packet);
    // The next packet; std::nullopt if the host hung up or sent nothing in time.
    [[nodiscard]] std::optional<Bytes> receive();
    [[nodiscard]] std::optional<TestReply> receiveReply();
    [[nodiscard]] std::optional<TestReply> request(const Bytes& packet);
    [[nodiscard]] bool open();
    // Whether a packet or the end of the connection can be read now.
    [[nodiscard]] bool isReadable() const;
    // Whether the host closes the connection without another packet.
    [[nodiscard]] bool isHungUpOn();
    void close() { m_socket.reset(); }

private:
    FileDescriptor m_socket;
};
