#pragma once

#include "services/host/ServiceHost.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

enum class FaultKind {
    RefuseClients, // opening a user client fails
    HangAll, // no request of any kind is answered
    Fail, // the request is refused and does not reach the card
    Delay, // the reply comes late by milliseconds
    Hang, // the reply never comes
    HangUp, // the connection ends instead of a reply
    CutShort, // the reply carries at most so many bytes
    ShortHeader, // a reply packet of 4 bytes
    SizeLie, // a reply packet whose size field says more than it carries
    OverCapacity, // a reply packet with more output than the client has room for
    ListZeroLength, // the first entry of a scan result says it is 0 bytes long
    ListHugeLength, // … almost 4 GiB long
    ListLyingCount, // a scan result counts far more entries than it carries
    ListElementsPastEnd, // information elements that claim to go on behind the entry
    ListEndless, // continuations of a scan result never end
};

enum class FaultDirection {
    Both,
    Query,
    Set,
};

struct Fault {
    FaultKind kind { FaultKind::Fail };
    std::optional<std::uint32_t> oid; // without the set flag; nothing: every structure call
    FaultDirection direction { FaultDirection::Both };
    std::uint32_t argument { 0 }; // Delay: milliseconds; CutShort: bytes
    std::optional<std::uint32_t> remainingTimes; // nothing: until it is cleared
};

// The word of a kind in commands, and back.
[[nodiscard]] std::string_view nameOfFault(FaultKind kind);
[[nodiscard]] std::optional<FaultKind> faultFromName(std::string_view name);
[[nodiscard]] std::vector<std::string_view> faultNames();

// Kinds that are about scan results whatever OID they are given.
[[nodiscard]] bool isListFault(FaultKind kind);
// Kinds that stand for something that happens to a client before any OID is known.
[[nodiscard]] bool isClientFault(FaultKind kind);

// The faults that are in force, in the order in which they were added.
class Faults {
public:
    void add(const Fault& fault);
    void clear();
    [[nodiscard]] const std::vector<Fault>& all() const { return m_faults; }

    // Those that meet a request. A fault for so many times is used up by it.
    [[nodiscard]] std::vector<Fault> meeting(const ServiceRequest& request);

private:
    std::vector<Fault> m_faults;
};
