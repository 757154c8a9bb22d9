// Any packet is either rejected or parsed into a request that encodes to the same packet.

#include "services/host/TransportPackets.h"
#include "tests/fuzz/Require.h"

#include <algorithm>
#include <cstring>

namespace {

void check(const ServiceRequest& request, std::span<const std::byte> packet)
{
    const auto inputSize = static_cast<std::uint32_t>(request.input.size());
    const std::uint32_t header[] { static_cast<std::uint32_t>(request.kind), request.selector, inputSize,
        request.replyCapacity };
    static_assert(sizeof(header) == requestHeaderBytes);
    require(packet.size() == requestHeaderBytes + request.input.size());
    require(std::memcmp(header, packet.data(), sizeof(header)) == 0);
    require(std::equal(request.input.begin(), request.input.end(), packet.begin() + requestHeaderBytes));
    require(inputSize <= maxPayloadBytes && request.replyCapacity <= maxPayloadBytes);
    require(request.kind == RequestKind::StructureCall || (inputSize == 0 && request.replyCapacity == 0));
    const auto reply = makeReply(0, request.input, request.replyCapacity);
    require(reply.size() == replyHeaderBytes + std::min(inputSize, request.replyCapacity) && isSuccessReply(reply));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto packet = std::as_bytes(std::span(data, size));
    if (const auto request = parseRequest(packet))
        check(*request, packet);
    return 0;
}
