#include "services/simulator/service/Faults.h"

#include "driver/records/Oids.h"

#include <array>

namespace {

struct KindName {
    FaultKind kind;
    std::string_view name;
};

constexpr std::array kindNames {
    KindName { FaultKind::RefuseClients, "refuse" },
    KindName { FaultKind::HangAll, "hang-all" },
    KindName { FaultKind::Fail, "fail" },
    KindName { FaultKind::Delay, "delay" },
    KindName { FaultKind::Hang, "hang" },
    KindName { FaultKind::HangUp, "hang-up" },
    KindName { FaultKind::CutShort, "cut" },
    KindName { FaultKind::ShortHeader, "short-header" },
    KindName { FaultKind::SizeLie, "size-lie" },
    KindName { FaultKind::OverCapacity, "over-capacity" },
    KindName { FaultKind::ListZeroLength, "list-zero-length" },
    KindName { FaultKind::ListHugeLength, "list-huge-length" },
    KindName { FaultKind::ListLyingCount, "list-lying-count" },
    KindName { FaultKind::ListElementsPastEnd, "list-elements-past-end" },
    KindName { FaultKind::ListEndless, "list-endless" },
};

bool meetsDirection(FaultDirection direction, bool isSet)
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

bool meets(const Fault& fault, const ServiceRequest& request)
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
        && meetsDirection(fault.direction, (request.selector & oidSetFlag) != 0);
}

} // namespace

std::string_view nameOfFault(FaultKind kind)
{
    for (const KindName& row : kindNames) {
        if (row.kind == kind)
            return row.name;
    }
    return {};
}

std::optional<FaultKind> faultFromName(std::string_view name)
{
    for (const KindName& row : kindNames) {
        if (row.name == name)
            return row.kind;
    }
    return std::nullopt;
}

std::vector<std::string_view> faultNames()
{
    std::vector<std::string_view> names;
    for (const KindName& row : kindNames)
        names.push_back(row.name);
    return names;
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

std::vector<Fault> Faults::meeting(const ServiceRequest& request)
{
    std::vector<Fault> met;
    for (Fault& fault : m_faults) {
        if (!meets(fault, request))
            continue;
        met.push_back(fault);
        if (fault.remainingTimes)
            --*fault.remainingTimes;
    }
    std::erase_if(m_faults, [](const Fault& fault) { return fault.remainingTimes == 0U; });
    return met;
}
