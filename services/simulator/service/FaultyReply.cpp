#include "services/simulator/service/FaultyReply.h"

#include "driver/records/Oids.h"
#include "services/simulator/service/ListFaults.h"

#include <algorithm>
#include <cstring>

namespace {

struct ReplyHeader {
    std::uint32_t result;
    std::uint32_t outputSize;
};

constexpr std::size_t shortHeaderBytes = 4;
constexpr std::uint32_t excessBytes = 64;

// A success reply whose header states a size of its own.
Bytes packet(const Bytes& output, std::uint32_t statedSize)
{
    Bytes bytes = bytesOf(ReplyHeader { 0, statedSize });
    bytes.insert(bytes.end(), output.begin(), output.end());
    return bytes;
}

void replyWithPacket(FaultyReply& reply, Bytes packet)
{
    reply.form = FaultyReply::Form::Packet;
    reply.packet = std::move(packet);
}

void spoilList(FaultyReply& reply, const ServiceRequest& request, FaultKind kind)
{
    const bool isContinuation = request.selector == VX_OID_802_11_BSSID_LIST_NEXT;
    // An empty continuation still ends the list, unless the list is to be endless.
    const bool isEnd = isContinuation && reply.answer.output.empty();
    if (reply.answer.accepted && (kind == FaultKind::ListEndless ? isContinuation : !isEnd))
        reply.answer.output = spoiledChunk(reply.answer.output, kind);
}

void apply(FaultyReply& reply, const ServiceRequest& request, const Fault& fault)
{
    Bytes& output = reply.answer.output;
    switch (fault.kind) {
    case FaultKind::RefuseClients:
    case FaultKind::Fail:
        reply.answer = {};
        break;
    case FaultKind::HangAll:
    case FaultKind::Hang:
        reply.form = FaultyReply::Form::Silence;
        break;
    case FaultKind::Delay:
        reply.delayMs += fault.argument;
        break;
    case FaultKind::HangUp:
        reply.form = FaultyReply::Form::HangUp;
        break;
    case FaultKind::CutShort:
        output.resize(std::min<std::size_t>(output.size(), fault.argument));
        break;
    case FaultKind::ShortHeader:
        replyWithPacket(reply, Bytes(shortHeaderBytes));
        break;
    case FaultKind::SizeLie:
        replyWithPacket(reply, packet(output, static_cast<std::uint32_t>(output.size()) + excessBytes));
        break;
    case FaultKind::OverCapacity:
        output.resize(request.replyCapacity + excessBytes);
        replyWithPacket(reply, packet(output, static_cast<std::uint32_t>(output.size())));
        break;
    case FaultKind::ListZeroLength:
    case FaultKind::ListHugeLength:
    case FaultKind::ListLyingCount:
    case FaultKind::ListElementsPastEnd:
    case FaultKind::ListEndless:
        spoilList(reply, request, fault.kind);
        break;
    }
}

} // namespace

bool reachesCard(const std::vector<Fault>& faults)
{
    return std::none_of(faults.begin(), faults.end(), [](const Fault& fault) {
        return fault.kind == FaultKind::Fail || fault.kind == FaultKind::Hang
            || targetOfFault(fault.kind) == FaultTarget::Client;
    });
}

FaultyReply faultyReply(const ServiceRequest& request, CardAnswer answer, const std::vector<Fault>& faults)
{
    FaultyReply reply;
    reply.answer = std::move(answer);
    for (const Fault& fault : faults)
        apply(reply, request, fault);
    return reply;
}
