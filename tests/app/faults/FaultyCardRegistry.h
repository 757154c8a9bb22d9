#pragma once

#include "platform/registry/IORegistry.h"
#include "services/simulator/card/SimulatedCard.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string_view>
#include <vector>

// What goes wrong with a request.
enum class RequestFault {
    Refused, // the user client is refused
    Failed, // the driver reports an error
    Short, // half of the reply; of its header if it has no output
    Long, // more bytes than the request leaves room for
    Garbage, // random output, or a random header if there is no output
    AllBitsSet, // output with every bit set
    Late, // the right reply, shortly before the limit
    TooLate, // no reply within the limit; the next request is answered again
    Hung, // no reply within the limit, and none afterwards
    Dropped, // the connection ends instead of a reply
    Vanished, // the card is pulled before the request
    VanishedWhileOpen, // the card is pulled between open and call
};

struct FaultRow {
    std::string_view name;
    RequestFault fault;
    bool lasts; // also applies to all later requests
    bool isPainted { false }; // the window is used and painted during the fault, which takes time
};

[[nodiscard]] const std::vector<FaultRow>& faultRows();

// Virtual time in milliseconds.
struct VirtualTime {
    std::int64_t nowMs { 0 };
};

// A registry in the same process with a simulated card and injected faults. A request runs from the search to the
// release of its handles. Replies are built as packets and parsed by the product. Waiting only advances the virtual
// time. Like the real registry, it refuses requests to a service that let one time out.
class FaultyCardRegistry final : public IORegistry {
public:
    static constexpr std::int64_t limitMs = 2000; // for a request
    static constexpr std::int64_t lateMs = 1900;
    static constexpr int maxReadyPolls = 50; // a lasting fault ends then: the utility polls without a limit

    struct Request {
        std::optional<std::uint32_t> oid; // set flag included; empty for a search without a call
        std::int64_t startMs { 0 };
        std::int64_t endMs { 0 };
    };

    FaultyCardRegistry(SimulatedCard& card, VirtualTime& time);

    // Injects the fault into the n-th request from now on, from 0.
    void inject(const FaultRow& row, std::size_t n, std::uint32_t seed);
    // The card answers again. A card that was pulled is inserted, and has lost its settings.
    void endFaults();
    void setInserted(bool inserted);

    void startRecording() { m_requests.clear(); }
    [[nodiscard]] const std::vector<Request>& requests() const { return m_requests; }
    // Whether the fault reached the request: some do not apply to a search without a call.
    [[nodiscard]] bool wasInjected() const { return m_injected; }
    [[nodiscard]] std::size_t heldHandles() const { return m_held.size(); }

    [[nodiscard]] kern_return_t IOMasterPort(mach_port_t& masterPort) override;
    [[nodiscard]] CFDictionaryRef IOServiceMatching(std::string_view className) override;
    [[nodiscard]] kern_return_t IOServiceGetMatchingServices(
        mach_port_t masterPort, CFDictionaryRef matching, io_object_t& iterator) override;
    [[nodiscard]] io_object_t IOIteratorNext(io_object_t iterator) override;
    void IOObjectRelease(io_object_t object) override { m_held.erase(object); }
    void CFRelease(CFDictionaryRef dictionary) override { m_held.erase(dictionary); }
    void mach_port_deallocate(mach_port_t port) override { m_held.erase(port); }
    [[nodiscard]] kern_return_t IOServiceOpen(
        io_object_t service, std::uint32_t type, io_connect_t& connection) override;
    void IOServiceClose(io_connect_t connection) override;
    [[nodiscard]] kern_return_t IOConnectMethodStructureIStructureO(io_connect_t connection, std::uint32_t index,
        std::span<const std::byte> input, std::uint32_t& outputSize, std::span<std::byte> output) override;
    kern_return_t IOConnectMethodScalarIScalarO(io_connect_t connection, std::uint32_t index) override;

private:
    [[nodiscard]] std::uint32_t hold();
    // The fault that applies to the current request.
    [[nodiscard]] std::optional<RequestFault> currentFault() const;
    // The reply to a structure call as a packet; std::nullopt if none arrives.
    [[nodiscard]] std::optional<Bytes> replyPacket(
        std::uint32_t oid, std::span<const std::byte> input, std::uint32_t capacity);
    [[nodiscard]] Bytes spoilt(Bytes output, RequestFault fault, std::uint32_t capacity);

    SimulatedCard& m_card;
    VirtualTime& m_time;
    std::vector<Request> m_requests;
    std::optional<FaultRow> m_fault;
    std::size_t m_faultyRequest { 0 };
    std::size_t m_requestNumber { 0 }; // since the injection, from 1
    std::uint32_t m_seed { 0 };
    int m_readyPolls { 0 }; // since the injection
    int m_uncalled { 0 }; // requests in a row that found no card or were refused
    bool m_injected { false };
    bool m_inserted { true };
    bool m_pulledByFault { false };
    bool m_silent { false }; // refused until the faults end
    bool m_connected { false };
    std::uint32_t m_lastHandle { 0 };
    std::set<std::uint32_t> m_held;
    std::uint32_t m_iterated { 0 }; // the iterator that has delivered the card
};
