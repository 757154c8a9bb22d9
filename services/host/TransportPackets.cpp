#include "services/host/TransportPackets.h"

#include <algorithm>
#include <cstring>

namespace {

std::uint32_t wordAt(std::span<const std::byte> packet, std::size_t offset)
{
    std::uint32_t word = 0;
    std::memcpy(&word, packet.subspan(offset, sizeof(word)).data(), sizeof(word));
    return word;
}

std::optional<RequestKind> kindOf(std::uint32_t word)
{
    switch (static_cast<RequestKind>(word)) {
    case RequestKind::Open:
    case RequestKind::StructureCall:
    case RequestKind::ScalarCall:
        return static_cast<RequestKind>(word);
    }
    return std::nullopt;
}

} // namespace

std::optional<ServiceRequest> parseRequest(std::span<const std::byte> packet)
{
    if (packet.size() < requestHeaderBytes)
        return std::nullopt;
    const auto kind = kindOf(wordAt(packet, 0));
    const std::uint32_t inputSize = wordAt(packet, 8);
    const std::uint32_t replyCapacity = wordAt(packet, 12);
    const std::span<const std::byte> input = packet.subspan(requestHeaderBytes);
    if (!kind || inputSize != input.size() || inputSize > maxPayloadBytes || replyCapacity > maxPayloadBytes)
        return std::nullopt;
    if (*kind != RequestKind::StructureCall && (inputSize != 0 || replyCapacity != 0))
        return std::nullopt;
    return ServiceRequest { *kind, wordAt(packet, 4), replyCapacity, { input.begin(), input.end() } };
}

std::vector<std::byte> makeReply(std::uint32_t result, std::span<const std::byte> output, std::uint32_t replyCapacity)
{
    const std::size_t size = result == 0 ? std::min<std::size_t>(output.size(), replyCapacity) : 0;
    const std::uint32_t words[] { result, static_cast<std::uint32_t>(size) };
    std::vector<std::byte> packet(replyHeaderBytes);
    std::memcpy(packet.data(), words, sizeof(words));
    const auto carried = output.first(size);
    packet.insert(packet.end(), carried.begin(), carried.end());
    return packet;
}

bool isSuccessReply(std::span<const std::byte> packet)
{
    return packet.size() >= replyHeaderBytes && wordAt(packet, 0) == 0;
}
