// Whatever a service sends as a reply: the first four bytes are the capacity that was offered, the rest is the packet.

#include "platform/registry/DriverReply.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace {

void require(bool condition)
{
    if (!condition)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::uint32_t capacity = 0;
    if (size < sizeof(capacity))
        return 0;
    std::memcpy(&capacity, data, sizeof(capacity));
    // The buffer has its exact size, so that a byte beyond it is one that the sanitizer knows.
    const auto bytes = std::as_bytes(std::span(data, size)).subspan(sizeof(capacity));
    const std::vector<std::byte> packet(bytes.begin(), bytes.end());

    const DriverReply reply = parseDriverReply(packet, capacity);
    constexpr std::size_t headerSize = 8;
    if (reply.verdict == ReplyVerdict::Success) {
        require(reply.output.size() <= capacity);
        require(reply.output.size() + headerSize == packet.size());
        require(std::memcmp(packet.data(), "\0\0\0\0", 4) == 0);
    } else {
        require(reply.output.empty());
    }
    if (packet.size() < headerSize)
        require(reply.verdict == ReplyVerdict::Malformed);
    return 0;
}
