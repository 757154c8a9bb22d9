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

// One call with its arguments, those that it does not have at their defaults, and what came back.
struct RecordedRegistryCall {
    RegistryCall call {};
    std::string className {}; // IOServiceMatching
    std::uint32_t handle { 0 }; // what the call works on: port, iterator, object, dictionary, service or connection
    CFDictionaryRef matching { 0 }; // IOServiceGetMatchingServices
    std::uint32_t index { 0 }; // connection type of IOServiceOpen, method index of the two calls
    std::vector<std::byte> input {};
    std::uint32_t capacity { 0 }; // bytes, as outputSize said on entry
    std::size_t outputBufferSize { 0 }; // bytes behind output
    std::uint32_t result { 0 }; // the handle handed out; for a structure call the bytes returned
    bool failed { false };

    bool operator==(const RecordedRegistryCall&) const = default;
};

// "IOServiceOpen(4, 0) = 5"; numbers of OID size in hexadecimal.
[[nodiscard]] std::string readableText(const RecordedRegistryCall& call);
void PrintTo(const RecordedRegistryCall& call, std::ostream* stream); // for GoogleTest's messages

// What a driver answers to one structure call.
struct RegistryAnswer {
    bool succeeds { true };
    std::vector<std::byte> bytes {};
    std::optional<std::uint32_t> returnedLength {}; // bytes it claims to have returned; as many as there are if absent
};

// A registry within the process that records every call and answers as scripted. Counts of calls start at 1.
class RecordingIORegistry final : public IORegistry {
public:
    using Answerer = std::function<RegistryAnswer(std::span<const std::byte> input)>;

    int serviceCount { 1 }; // services that a search finds
    RegistryAnswer otherwise {}; // to OIDs without a script: success, nothing returned
    std::vector<RecordedRegistryCall> calls;
    std::function<void(const RecordedRegistryCall&)> onCall; // called before a call is carried out

    // Scripts for one OID, the number as the call carries it (set flag included). The answers given once are used up
    // first, in order, before the standing one holds.
    void answer(std::uint32_t oid, std::vector<std::byte> bytes);
    void answerOnce(std::uint32_t oid, RegistryAnswer answer);
    void answerWith(std::uint32_t oid, Answerer answerer);
    void fail(std::uint32_t oid);

    // The call that fails: the n-th of its kind from now on, or the n-th of all from now on. A release that fails
    // releases nothing; an iterator that fails is at its end.
    void failAt(RegistryCall call, int n = 1);
    void failAtCall(int n);

    [[nodiscard]] std::vector<std::string> texts() const;
    [[nodiscard]] std::vector<RegistryCall> kinds() const;
    [[nodiscard]] int count(RegistryCall call) const;
    // The structure calls' OIDs, in order.
    [[nodiscard]] std::vector<std::uint32_t> oids() const;
    // The inputs of every structure call of one OID, in order.
    [[nodiscard]] std::vector<std::vector<std::byte>> inputsOf(std::uint32_t oid) const;
    // Handles that were handed out and not released.
    [[nodiscard]] std::vector<std::uint32_t> held() const;
    // Forgets the calls; what is held and scripted stays.
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
    std::vector<std::pair<RegistryCall, int>> m_failingOfKind; // calls to go
    std::vector<int> m_failingOfAll; // calls to go
};
