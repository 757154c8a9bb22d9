#include "services/simulator/service/Faults.h"

#include "driver/records/Oids.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::array kinds {
    FaultKindRow { FaultKind::RefuseClients, FaultTarget::Client, "refuse", "", "refuse to open user clients" },
    FaultKindRow {
        FaultKind::HangAll, FaultTarget::Client, "hang-all", "", "answer nothing, not even opening a user client" },
    FaultKindRow {
        FaultKind::Fail, FaultTarget::Request, "fail", "", "refuse the request, which does not reach the card" },
    FaultKindRow { FaultKind::Delay, FaultTarget::Request, "delay", "--ms N", "delay the reply, by at most 600000 ms" },
    FaultKindRow {
        FaultKind::Hang, FaultTarget::Request, "hang", "", "never answer the request, which does not reach the card" },
    FaultKindRow { FaultKind::HangUp, FaultTarget::Request, "hang-up", "",
        "close the connection instead of a reply; the card gets the request" },
    FaultKindRow { FaultKind::CutShort, FaultTarget::Request, "cut", "--bytes N", "truncate the reply to N bytes" },
    FaultKindRow { FaultKind::ShortHeader, FaultTarget::Request, "short-header", "", "reply with a packet of 4 bytes" },
    FaultKindRow {
        FaultKind::SizeLie, FaultTarget::Request, "size-lie", "", "reply with a size field that is 64 too large" },
    FaultKindRow { FaultKind::OverCapacity, FaultTarget::Request, "over-capacity", "",
        "reply with 64 bytes more than the client has room for" },
    FaultKindRow { FaultKind::ListZeroLength, FaultTarget::List, "list-zero-length", "",
        "set the length of each chunk's first entry to 0" },
    FaultKindRow { FaultKind::ListHugeLength, FaultTarget::List, "list-huge-length", "",
        "set the length of each chunk's first entry to 4294967280" },
    FaultKindRow { FaultKind::ListLyingCount, FaultTarget::List, "list-lying-count", "",
        "set the entry count of each chunk to 1000000" },
    FaultKindRow { FaultKind::ListElementsPastEnd, FaultTarget::List, "list-elements-past-end", "",
        "set the elements' length of each chunk's first entry to 60000" },
    FaultKindRow { FaultKind::ListEndless, FaultTarget::List, "list-endless", "", "continue the list without end" },
};

const FaultKindRow& rowOf(FaultKind kind)
{
    return *std::find_if(kinds.begin(), kinds.end(), [kind](const FaultKindRow& row) { return row.kind == kind; });
}

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
    if (targetOfFault(fault.kind) == FaultTarget::List)
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
    return rowOf(kind).name;
}

FaultTarget targetOfFault(FaultKind kind)
{
    return rowOf(kind).target;
}

std::optional<FaultKind> faultFromName(std::string_view name)
{
    for (const FaultKindRow& row : kinds) {
        if (row.name == name)
            return row.kind;
    }
    return std::nullopt;
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
