#include "platform/registry/DriverReply.h"

#include "platform/registry/DriverMessages.h"

#include <cstring>

DriverReply parseDriverReply(std::span<const std::byte> packet, std::uint32_t replyCapacity)
{
    DriverReplyHeader header {};
    if (packet.size() < sizeof(header))
        return {};
    std::memcpy(&header, packet.data(), sizeof(header));
    const auto output = packet.subspan(sizeof(header));
    if (header.outputSize != output.size() || header.outputSize > replyCapacity)
        return {};
    if (header.result != 0)
        return { ReplyStatus::Failure, {} };
    return { ReplyStatus::Success, output };
}
