#pragma once

#include "platform/registry/IORegistry.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <utility>
#include <vector>

enum class RegistryCall {
    IOMasterPort,
    IOServiceMatching,
    IOServiceGetMatchingServices,
    IOIteratorNext,
    IOObjectRelease,
    CFRelease,
    mach_port_deallocate,
    IOServiceOpen,
    IOServiceClose,
    IOConnectMethodStructureIStructureO,
    IOConnectMethodScalarIScalarO,
};

// One call with its arguments and result. Arguments that it does not have keep their defaults.
struct RecordedRegistryCall {
    RegistryCall call {};
    std::string className {}; // IOServiceMatching
    std::uint32_t handle { 0 }; // the port, iterator, object, dictionary, service or connection
    CFDictionaryRef matching { 0 }; // IOServiceGetMatchingServices
    std::uint32_t index { 0 }; // connection type of IOServiceOpen; method index of calls
    std::vector<std::byte> input {};
    std::uint32_t capacity { 0 }; // bytes; outputSize on entry
    std::size_t outputBufferSize { 0 }; // bytes
    std::uint32_t result { 0 }; // the new handle; for a structure call, the bytes returned
    bool failed { false };

    bool operator==(const RecordedRegistryCall&) const = default;
};

// "IOServiceOpen(4, 0) = 5"; OIDs are in hexadecimal.
[[nodiscard]] std::string readableText(const RecordedRegistryCall& call);
void PrintTo(const RecordedRegistryCall& call, std::ostream* stream); // used by GoogleTest

// A driver's reply to one structure call.
struct RegistryAnswer {
    bool succeeds { true };
    std::vector<std::byte> bytes {};
    std::optional<std::uint32_t> returnedLength {}; // as reported by the driver; by default bytes.size()
};

// A registry in the same process that records every call and answers as scripted. Call numbers start at 1.
class RecordingIORegistry final : public IORegistry {
public:
    using Answerer = std::function<RegistryAnswer(std::span<const std::byte> input)>;

    int serviceCount { 1 }; // services found by a search
    RegistryAnswer otherwise {}; // for OIDs without a script: success, no output
    std::vector<RecordedRegistryCall> calls;
    std::function<void(const RecordedRegistryCall&)> onCall; // before a call is executed

    // Scripts for one OID, set flag included. The answers of answerOnce are used first, in order; then the one of
    // answer, answerWith or fail applies.
    void answer(std::uint32_t oid, std::vector<std::byte> bytes);
    void answerOnce(std::uint32_t oid, RegistryAnswer answer);
    void answerWith(std::uint32_t oid, Answerer answerer);
    void fail(std::uint32_t oid);

    // Makes a call fail, counted from now on: the n-th of its kind or the n-th of all. A failed release releases
    // nothing; a failed iterator is at its end.
    void failAt(RegistryCall call, int n = 1);
    void failAtCall(int n);

    [[nodiscard]] std::vector<std::string> texts() const;
    [[nodiscard]] std::vector<RegistryCall> kinds() const;
    [[nodiscard]] int count(RegistryCall call) const;
    // The OIDs of the structure calls, in order.
    [[nodiscard]] std::vector<std::uint32_t> oids() const;
    // The inputs of the structure calls with one OID, in order.
    [[nodiscard]] std::vector<std::vector<std::byte>> inputsOf(std::uint32_t oid) const;
    // Handles that have not been released.
    [[nodiscard]] std::vector<std::uint32_t> held() const;
    // Clears the recorded calls, but neither handles nor scripts.
    void forgetCalls() { calls.clear(); }

    [[nodiscard]] kern_return_t IOMasterPort(mach_port_t& masterPort) override;
    [[nodiscard]] CFDictionaryRef IOServiceMatching(std::string_view className) override;
    [[nodiscard]] kern_return_t IOServiceGetMatchingServices(
        mach_port_t masterPort, CFDictionaryRef matching, io_object_t& iterator) override;
    [[nodiscard]] io_object_t IOIteratorNext(io_object_t iterator) override;
    void IOObjectRelease(io_object_t object) override;
    void CFRelease(CFDictionaryRef dictionary) override;
    void mach_port_deallocate(mach_port_t port) override;
    [[nodiscard]] kern_return_t IOServiceOpen(
        io_object_t service, std::uint32_t type, io_connect_t& connection) override;
    void IOServiceClose(io_connect_t connection) override;
    [[nodiscard]] kern_return_t IOConnectMethodStructureIStructureO(io_connect_t connection, std::uint32_t index,
        std::span<const std::byte> input, std::uint32_t& outputSize, std::span<std::byte> output) override;
    kern_return_t IOConnectMethodScalarIScalarO(io_connect_t connection, std::uint32_t index) override;

private:
    [[nodiscard]] bool begin(RecordedRegistryCall call);
    [[nodiscard]] std::uint32_t hold();
    void release(RegistryCall call, std::uint32_t handle);
    [[nodiscard]] RegistryAnswer nextAnswer(std::uint32_t oid, std::span<const std::byte> input);
    [[nodiscard]] kern_return_t finish(bool succeeded, std::uint32_t result);

    std::uint32_t m_lastHandle { 0 };
    std::set<std::uint32_t> m_held;
    std::map<io_object_t, int> m_servicesLeft; // by iterator
    std::map<std::uint32_t, std::vector<RegistryAnswer>> m_onceAnswers;
    std::map<std::uint32_t, Answerer> m_answers;
    std::vector<std::pair<RegistryCall, int>> m_failingOfKind; // remaining calls
    std::vector<int> m_failingOfAll; // remaining calls
};
