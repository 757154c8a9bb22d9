#include "services/simulator/service/Faults.h"

#include "driver/records/Oids.h"

#include <array>

namespace {

constexpr std::array kinds {
    FaultKindRow { FaultKind::RefuseClients, "refuse", "", "refuse to open user clients" },
    FaultKindRow { FaultKind::HangAll, "hang-all", "", "answer nothing, not even opening a user client" },
    FaultKindRow { FaultKind::Fail, "fail", "", "refuse the request, which does not reach the card" },
    FaultKindRow { FaultKind::Delay, "delay", "--ms N", "delay the reply, by at most 600000 ms" },
    FaultKindRow { FaultKind::Hang, "hang", "", "never answer the request, which does not reach the card" },
    FaultKindRow {
        FaultKind::HangUp, "hang-up", "", "close the connection instead of a reply; the card gets the request" },
    FaultKindRow { FaultKind::CutShort, "cut", "--bytes N", "truncate the reply to N bytes" },
    FaultKindRow { FaultKind::ShortHeader, "short-header", "", "reply with a packet of 4 bytes" },
    FaultKindRow { FaultKind::SizeLie, "size-lie", "", "reply with a size field that is 64 too large" },
    FaultKindRow {
        FaultKind::OverCapacity, "over-capacity", "", "reply with 64 bytes more than the client has room for" },
    FaultKindRow {
        FaultKind::ListZeroLength, "list-zero-length", "", "set the length of each chunk's first entry to 0" },
    FaultKindRow {
        FaultKind::ListHugeLength, "list-huge-length", "", "set the length of each chunk's first entry to 4294967280" },
    FaultKindRow { FaultKind::ListLyingCount, "list-lying-count", "", "set the entry count of each chunk to 1000000" },
    FaultKindRow { FaultKind::ListElementsPastEnd, "list-elements-past-end", "",
        "set the elements' length of each chunk's first entry to 60000" },
    FaultKindRow { FaultKind::ListEndless, "list-endless", "", "continue the list without end" },
};

bool matchesDirection(FaultDirection direction, bool isSet)
{
    switch (direction) {
    case FaultDirection::Both:
        return true;
    case FaultDirection::Query:
        return !isSet;
    case FaultDirection::Set:
        return isSet;
    }
    return false;
}

bool isListQuery(std::uint32_t selector)
{
    return selector == OID_802_11_BSSID_LIST || selector == VX_OID_802_11_BSSID_LIST_NEXT;
}

bool appliesTo(const Fault& fault, const ServiceRequest& request)
{
    if (fault.kind == FaultKind::HangAll)
        return true;
    if (fault.kind == FaultKind::RefuseClients)
        return request.kind == RequestKind::Open;
    if (request.kind != RequestKind::StructureCall)
        return false;
    if (isListFault(fault.kind))
        return isListQuery(request.selector);
    return (!fault.oid || *fault.oid == (request.selector & ~oidSetFlag))
        && matchesDirection(fault.direction, (request.selector & oidSetFlag) != 0);
}

} // namespace

std::span<const FaultKindRow> faultKinds()
{
    return kinds;
}

std::string_view nameOfFault(FaultKind kind)
{
    for (const FaultKindRow& row : kinds) {
        if (row.kind == kind)
            return row.name;
    }
    return {};
}

std::optional<FaultKind> faultFromName(std::string_view name)
{
    for (const FaultKindRow& row : kinds) {
        if (row.name == name)
            return row.kind;
    }
    return std::nullopt;
}

bool isListFault(FaultKind kind)
{
    switch (kind) {
    case FaultKind::ListZeroLength:
    case FaultKind::ListHugeLength:
    case FaultKind::ListLyingCount:
    case FaultKind::ListElementsPastEnd:
    case FaultKind::ListEndless:
        return true;
    case FaultKind::RefuseClients:
    case FaultKind::HangAll:
    case FaultKind::Fail:
    case FaultKind::Delay:
    case FaultKind::Hang:
    case FaultKind::HangUp:
    case FaultKind::CutShort:
    case FaultKind::ShortHeader:
    case FaultKind::SizeLie:
    case FaultKind::OverCapacity:
        break;
    }
    return false;
}

bool isClientFault(FaultKind kind)
{
    return kind == FaultKind::RefuseClients || kind == FaultKind::HangAll;
}

void Faults::add(const Fault& fault)
{
    m_faults.push_back(fault);
}

void Faults::clear()
{
    m_faults.clear();
}

std::vector<Fault> Faults::take(const ServiceRequest& request)
{
    std::vector<Fault> taken;
    for (Fault& fault : m_faults) {
        if (!appliesTo(fault, request))
            continue;
        taken.push_back(fault);
        if (fault.remainingTimes)
            --*fault.remainingTimes;
    }
    std::erase_if(m_faults, [](const Fault& fault) { return fault.remainingTimes == 0U; });
    return taken;
}
