// Replies of a driver service: the first four bytes of the input are the reply capacity, the rest is the packet.

#include "platform/registry/DriverReply.h"
#include "tests/fuzz/Require.h"

#include <cstdint>
#include <cstring>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::uint32_t capacity = 0;
    if (size < sizeof(capacity))
        return 0;
    std::memcpy(&capacity, data, sizeof(capacity));
    // A buffer of exactly this size lets the sanitizer detect reads beyond the packet.
    const auto bytes = std::as_bytes(std::span(data, size)).subspan(sizeof(capacity));
    const std::vector<std::byte> packet(bytes.begin(), bytes.end());

    const DriverReply reply = parseDriverReply(packet, capacity);
    constexpr std::size_t headerSize = 8;
    if (reply.status == ReplyStatus::Success) {
        require(reply.output.size() <= capacity);
        require(reply.output.size() + headerSize == packet.size());
        require(std::memcmp(packet.data(), "\0\0\0\0", 4) == 0);
    } else {
        require(reply.output.empty());
    }
    if (packet.size() < headerSize)
        require(reply.status == ReplyStatus::Malformed);
    return 0;
}
