#pragma once

#include "services/host/ServiceHost.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

enum class FaultKind {
    RefuseClients,
    HangAll,
    Fail,
    Delay,
    Hang,
    HangUp,
    CutShort,
    ShortHeader,
    SizeLie,
    OverCapacity,
    ListZeroLength,
    ListHugeLength,
    ListLyingCount,
    ListElementsPastEnd,
    ListEndless,
};

// What a fault applies to.
enum class FaultTarget {
    Client, // before any OID is known
    Request, // structure calls, all or those of one OID
    List, // the replies that deliver a scan result
};

enum class FaultDirection {
    Both,
    Query,
    Set,
};

struct Fault {
    FaultKind kind { FaultKind::Fail };
    std::optional<std::uint32_t> oid; // without the set flag; std::nullopt: every structure call
    FaultDirection direction { FaultDirection::Both };
    std::uint32_t argument { 0 }; // Delay: milliseconds; CutShort: bytes
    std::optional<std::uint32_t> remainingTimes; // std::nullopt: until cleared
};

// A kind of fault as the commands, the help and the documents name it.
struct FaultKindRow {
    FaultKind kind;
    FaultTarget target;
    std::string_view name;
    std::string_view arguments;
    std::string_view summary;
};

[[nodiscard]] std::span<const FaultKindRow> faultKinds();
[[nodiscard]] std::string_view nameOfFault(FaultKind kind);
[[nodiscard]] FaultTarget targetOfFault(FaultKind kind);
[[nodiscard]] std::optional<FaultKind> faultFromName(std::string_view name);

// The active faults, in the order in which they were added.
class Faults {
public:
    void add(const Fault& fault);
    void clear();
    [[nodiscard]] const std::vector<Fault>& all() const { return m_faults; }

    // The faults that apply to a request. Counts down the remaining times of each and removes it at 0.
    [[nodiscard]] std::vector<Fault> take(const ServiceRequest& request);

private:
    std::vector<Fault> m_faults;
};
