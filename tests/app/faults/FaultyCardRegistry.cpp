#include "tests/app/faults/FaultyCardRegistry.h"

#include "driver/records/Oids.h"
#include "platform/registry/DriverMessages.h"
#include "platform/registry/DriverReply.h"

#include <algorithm>
#include <random>
#include <utility>

namespace {

constexpr std::size_t excessBytes = 64;

Bytes randomBytes(std::size_t size, std::uint32_t seed)
{
    std::minstd_rand random(seed);
    Bytes bytes(size);
    for (std::byte& byte : bytes)
        byte = static_cast<std::byte>(random() >> 8);
    return bytes;
}

Bytes packetOf(std::uint32_t result, const Bytes& output)
{
    Bytes packet = bytesOf(DriverReplyHeader { result, static_cast<std::uint32_t>(output.size()) });
    packet.insert(packet.end(), output.begin(), output.end());
    return packet;
}

} // namespace

const std::vector<FaultRow>& faultRows()
{
    static const std::vector<FaultRow> rows {
        { "refused once", RequestFault::Refused, false },
        { "refused from there on", RequestFault::Refused, true },
        { "failed once", RequestFault::Failed, false },
        { "failed from there on", RequestFault::Failed, true },
        { "short once", RequestFault::Short, false },
        { "short from there on", RequestFault::Short, true },
        { "long once", RequestFault::Long, false },
        { "garbage once", RequestFault::Garbage, false },
        { "garbage from there on", RequestFault::Garbage, true, true },
        { "all bits set once", RequestFault::AllBitsSet, false },
        { "all bits set from there on", RequestFault::AllBitsSet, true, true },
        { "late once", RequestFault::Late, false },
        { "late from there on", RequestFault::Late, true },
        { "too late once", RequestFault::TooLate, false },
        { "hung", RequestFault::Hung, true, true },
        { "dropped once", RequestFault::Dropped, false },
        { "dropped from there on", RequestFault::Dropped, true },
        { "vanished and back", RequestFault::Vanished, true },
        { "vanished while open, and back", RequestFault::VanishedWhileOpen, true },
    };
    return rows;
}

FaultyCardRegistry::FaultyCardRegistry(SimulatedCard& card, VirtualTime& time)
    : m_card(card)
    , m_time(time)
{
    setInserted(true);
}

void FaultyCardRegistry::inject(const FaultRow& row, std::size_t n, std::uint32_t seed)
{
    m_fault = row;
    m_faultyRequest = n;
    m_requestNumber = 0;
    m_seed = seed;
    m_readyPolls = 0;
    m_uncalled = 0;
    m_injected = false;
}

void FaultyCardRegistry::endFaults()
{
    m_fault.reset();
    m_silent = false;
    if (std::exchange(m_pulledByFault, false))
        setInserted(true);
}

void FaultyCardRegistry::setInserted(bool inserted)
{
    m_inserted = inserted;
    if (inserted)
        m_card.powerUp(m_time.nowMs);
}

std::optional<RequestFault> FaultyCardRegistry::currentFault() const
{
    if (!m_fault || m_requestNumber <= m_faultyRequest)
        return std::nullopt;
    const bool applies = m_requestNumber == m_faultyRequest + 1 || m_fault->lasts;
    return applies ? std::optional(m_fault->fault) : std::nullopt;
}

kern_return_t FaultyCardRegistry::IOMasterPort(mach_port_t& masterPort)
{
    masterPort = hold();
    return KERN_SUCCESS;
}

CFDictionaryRef FaultyCardRegistry::IOServiceMatching(std::string_view /*className*/)
{
    return hold();
}

kern_return_t FaultyCardRegistry::IOServiceGetMatchingServices(
    mach_port_t /*masterPort*/, CFDictionaryRef matching, io_object_t& iterator)
{
    m_held.erase(matching);
    iterator = hold();
    m_requests.push_back({ std::nullopt, m_time.nowMs, m_time.nowMs });
    ++m_requestNumber;
    // Polls of a card that cannot be called.
    if (++m_uncalled > maxReadyPolls * 4)
        endFaults();
    if (currentFault() == RequestFault::Vanished) {
        m_injected = true;
        m_pulledByFault = true;
        m_inserted = false;
    }
    return KERN_SUCCESS;
}

io_object_t FaultyCardRegistry::IOIteratorNext(io_object_t iterator)
{
    if (!m_inserted || m_iterated == iterator)
        return 0;
    m_iterated = iterator;
    return hold();
}

kern_return_t FaultyCardRegistry::IOServiceOpen(io_object_t service, std::uint32_t /*type*/, io_connect_t& connection)
{
    connection = 0;
    const bool refused = currentFault() == RequestFault::Refused;
    m_injected |= refused;
    if (refused || m_silent || !m_inserted || !m_held.contains(service))
        return KERN_FAILURE;
    connection = hold();
    m_connected = true;
    return KERN_SUCCESS;
}

void FaultyCardRegistry::IOServiceClose(io_connect_t connection)
{
    m_connected = false;
    m_held.erase(connection);
}

kern_return_t FaultyCardRegistry::IOConnectMethodStructureIStructureO(io_connect_t connection, std::uint32_t index,
    std::span<const std::byte> input, std::uint32_t& outputSize, std::span<std::byte> output)
{
    const std::uint32_t capacity = std::min(outputSize, maxTransferSize);
    outputSize = 0;
    m_requests.back().oid = index;
    m_uncalled = 0;
    if (!m_held.contains(connection))
        return KERN_FAILURE;
    const auto packet = replyPacket(index, input, capacity);
    m_requests.back().endMs = m_time.nowMs;
    const DriverReply reply = packet ? parseDriverReply(*packet, capacity) : DriverReply();
    m_connected = reply.status != ReplyStatus::Malformed;
    if (reply.status != ReplyStatus::Success)
        return KERN_FAILURE;
    std::copy_n(reply.output.begin(), std::min(reply.output.size(), output.size()), output.begin());
    outputSize = static_cast<std::uint32_t>(reply.output.size());
    return KERN_SUCCESS;
}

kern_return_t FaultyCardRegistry::IOConnectMethodScalarIScalarO(io_connect_t connection, std::uint32_t /*index*/)
{
    return m_connected && m_held.contains(connection) ? KERN_SUCCESS : KERN_FAILURE;
}

std::uint32_t FaultyCardRegistry::hold()
{
    m_held.insert(++m_lastHandle);
    return m_lastHandle;
}

std::optional<Bytes> FaultyCardRegistry::replyPacket(
    std::uint32_t oid, std::span<const std::byte> input, std::uint32_t capacity)
{
    if (m_fault && oid == VX_OID_802_11_READY_FLAG && ++m_readyPolls > maxReadyPolls)
        endFaults();
    const std::optional<RequestFault> fault = currentFault();
    m_injected |= fault.has_value();
    switch (fault.value_or(RequestFault::Late)) {
    case RequestFault::Failed:
        return packetOf(1, {});
    case RequestFault::TooLate: // the card carries it out all the same
        m_time.nowMs += limitMs;
        (void)m_card.answer(oid, input, capacity, m_time.nowMs);
        return std::nullopt;
    case RequestFault::Hung:
        m_time.nowMs += limitMs;
        m_silent = true;
        return std::nullopt;
    case RequestFault::Dropped:
        return std::nullopt;
    case RequestFault::VanishedWhileOpen:
        m_pulledByFault = true;
        m_inserted = false;
        return std::nullopt;
    default:
        break;
    }
    if (fault == RequestFault::Late)
        m_time.nowMs += lateMs;
    const CardAnswer answer = m_card.answer(oid, input, capacity, m_time.nowMs);
    if (fault && fault != RequestFault::Late)
        return spoilt(answer.output, *fault, capacity);
    return packetOf(answer.accepted ? 0 : 1, answer.output);
}

Bytes FaultyCardRegistry::spoilt(Bytes output, RequestFault fault, std::uint32_t capacity)
{
    const bool isQuery = capacity != 0;
    switch (fault) {
    case RequestFault::Short: {
        if (!isQuery)
            return Bytes(sizeof(DriverReplyHeader) / 2);
        output.resize(output.size() / 2);
        return packetOf(0, output);
    }
    case RequestFault::Long:
        return packetOf(0, Bytes(capacity + excessBytes));
    case RequestFault::AllBitsSet:
        return packetOf(0, Bytes(capacity, std::byte { 0xFF }));
    default:
        ++m_seed;
        return isQuery ? packetOf(0, randomBytes(capacity, m_seed)) : randomBytes(sizeof(DriverReplyHeader), m_seed);
    }
}
