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
// A request packet with exactly these header words, whether they make sense or not.
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

// Lets the event loop of the test run until the condition holds; false when that takes unreasonably long.
[[nodiscard]] bool pumpUntil(const std::function<bool()>& condition);
// Lets every event that is due be handled.
void pump();

// A client that lives in the thread of the host it talks to.
class TestClient {
public:
    // Not connected when nobody listens at the path, which may be longer than a socket address holds.
    explicit TestClient(const std::string& path);

    [[nodiscard]] bool isConnected() const { return static_cast<bool>(m_socket); }
    [[nodiscard]] bool send(const Bytes& packet);
    // The next packet; nothing when the host hung up instead or none came.
    [[nodiscard]] std::optional<Bytes> receive();
    [[nodiscard]] std::optional<TestReply> receiveReply();
    [[nodiscard]] std::optional<TestReply> request(const Bytes& packet);
    [[nodiscard]] bool open();
    // Whether a packet, or the end, is there now.
    [[nodiscard]] bool hasNews() const;
    // Whether the host ends the connection without another packet.
    [[nodiscard]] bool isHungUpOn();
    void close() { m_socket.reset(); }
    [[nodiscard]] int socket() const { return m_socket.get(); }

private:
    FileDescriptor m_socket;
};
