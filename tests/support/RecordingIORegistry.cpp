#include "tests/support/RecordingIORegistry.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <ostream>

namespace {

const char* nameOf(RegistryCall call)
{
    switch (call) {
    case RegistryCall::IOMasterPort:
        return "IOMasterPort";
    case RegistryCall::IOServiceMatching:
        return "IOServiceMatching";
    case RegistryCall::IOServiceGetMatchingServices:
        return "IOServiceGetMatchingServices";
    case RegistryCall::IOIteratorNext:
        return "IOIteratorNext";
    case RegistryCall::IOObjectRelease:
        return "IOObjectRelease";
    case RegistryCall::CFRelease:
        return "CFRelease";
    case RegistryCall::mach_port_deallocate:
        return "mach_port_deallocate";
    case RegistryCall::IOServiceOpen:
        return "IOServiceOpen";
    case RegistryCall::IOServiceClose:
        return "IOServiceClose";
    case RegistryCall::IOConnectMethodStructureIStructureO:
        return "IOConnectMethodStructureIStructureO";
    case RegistryCall::IOConnectMethodScalarIScalarO:
        return "IOConnectMethodScalarIScalarO";
    }
    return "?";
}

std::string hexText(std::uint32_t number)
{
    std::array<char, 16> text {};
    (void)std::snprintf(text.data(), text.size(), "0x%08X", number);
    return text.data();
}

std::string bytesText(const std::vector<std::byte>& bytes)
{
    std::string result;
    for (const std::byte byte : bytes) {
        std::array<char, 4> text {};
        (void)std::snprintf(text.data(), text.size(), "%02X", std::to_integer<unsigned>(byte));
        result += result.empty() ? text.data() : std::string(" ") + text.data();
    }
    return "[" + result + "]";
}

std::string argumentsText(const RecordedRegistryCall& call)
{
    switch (call.call) {
    case RegistryCall::IOMasterPort:
        return "";
    case RegistryCall::IOServiceMatching:
        return call.className;
    case RegistryCall::IOServiceGetMatchingServices:
        return std::to_string(call.handle) + ", " + std::to_string(call.matching);
    case RegistryCall::IOServiceOpen:
    case RegistryCall::IOConnectMethodScalarIScalarO:
        return std::to_string(call.handle) + ", " + std::to_string(call.index);
    case RegistryCall::IOConnectMethodStructureIStructureO:
        return std::to_string(call.handle) + ", " + hexText(call.index) + ", " + bytesText(call.input) + ", capacity "
            + std::to_string(call.capacity);
    case RegistryCall::IOIteratorNext:
    case RegistryCall::IOObjectRelease:
    case RegistryCall::CFRelease:
    case RegistryCall::mach_port_deallocate:
    case RegistryCall::IOServiceClose:
        return std::to_string(call.handle);
    }
    return "";
}

} // namespace

std::string readableText(const RecordedRegistryCall& call)
{
    std::string text = std::string(nameOf(call.call)) + "(" + argumentsText(call) + ")";
    if (call.result != 0)
        text += " = " + std::to_string(call.result);
    return call.failed ? text + " failed" : text;
}

void PrintTo(const RecordedRegistryCall& call, std::ostream* stream)
{
    *stream << readableText(call);
}

void RecordingIORegistry::answer(std::uint32_t oid, std::vector<std::byte> bytes)
{
    m_answers[oid] = [bytes = std::move(bytes)](auto) { return RegistryAnswer { .bytes = bytes }; };
}

void RecordingIORegistry::answerOnce(std::uint32_t oid, RegistryAnswer answer)
{
    m_onceAnswers[oid].push_back(std::move(answer));
}

void RecordingIORegistry::answerWith(std::uint32_t oid, Answerer answerer)
{
    m_answers[oid] = std::move(answerer);
}

void RecordingIORegistry::fail(std::uint32_t oid)
{
    m_answers[oid] = [](auto) { return RegistryAnswer { .succeeds = false }; };
}

void RecordingIORegistry::failAt(RegistryCall call, int n)
{
    m_failingOfKind.emplace_back(call, n);
}

void RecordingIORegistry::failAtCall(int n)
{
    m_failingOfAll.push_back(n);
}

std::vector<std::string> RecordingIORegistry::texts() const
{
    std::vector<std::string> result;
    for (const auto& call : calls)
        result.push_back(readableText(call));
    return result;
}

std::vector<RegistryCall> RecordingIORegistry::kinds() const
{
    std::vector<RegistryCall> result;
    for (const auto& call : calls)
        result.push_back(call.call);
    return result;
}

int RecordingIORegistry::count(RegistryCall call) const
{
    return static_cast<int>(
        std::count_if(calls.begin(), calls.end(), [call](const auto& made) { return made.call == call; }));
}

std::vector<std::uint32_t> RecordingIORegistry::oids() const
{
    std::vector<std::uint32_t> result;
    for (const auto& call : calls) {
        if (call.call == RegistryCall::IOConnectMethodStructureIStructureO)
            result.push_back(call.index);
    }
    return result;
}

std::vector<std::vector<std::byte>> RecordingIORegistry::inputsOf(std::uint32_t oid) const
{
    std::vector<std::vector<std::byte>> result;
    for (const auto& call : calls) {
        if (call.call == RegistryCall::IOConnectMethodStructureIStructureO && call.index == oid)
            result.push_back(call.input);
    }
    return result;
}

std::vector<std::uint32_t> RecordingIORegistry::held() const
{
    return { m_held.begin(), m_held.end() };
}

kern_return_t RecordingIORegistry::IOMasterPort(mach_port_t& masterPort)
{
    if (!begin({ .call = RegistryCall::IOMasterPort }))
        return KERN_FAILURE;
    masterPort = hold();
    return finish(true, masterPort);
}

CFDictionaryRef RecordingIORegistry::IOServiceMatching(std::string_view className)
{
    if (!begin({ .call = RegistryCall::IOServiceMatching, .className = std::string(className) }))
        return 0;
    return calls.back().result = hold();
}

kern_return_t RecordingIORegistry::IOServiceGetMatchingServices(
    mach_port_t masterPort, CFDictionaryRef matching, io_object_t& iterator)
{
    const bool succeeds
        = begin({ .call = RegistryCall::IOServiceGetMatchingServices, .handle = masterPort, .matching = matching });
    m_held.erase(matching);
    if (!succeeds)
        return KERN_FAILURE;
    iterator = hold();
    m_servicesLeft[iterator] = serviceCount;
    return finish(true, iterator);
}

io_object_t RecordingIORegistry::IOIteratorNext(io_object_t iterator)
{
    if (!begin({ .call = RegistryCall::IOIteratorNext, .handle = iterator }))
        return 0;
    const auto left = m_servicesLeft.find(iterator);
    if (left == m_servicesLeft.end() || left->second <= 0)
        return 0;
    --left->second;
    return calls.back().result = hold();
}

void RecordingIORegistry::IOObjectRelease(io_object_t object)
{
    release(RegistryCall::IOObjectRelease, object);
}

void RecordingIORegistry::CFRelease(CFDictionaryRef dictionary)
{
    release(RegistryCall::CFRelease, dictionary);
}

void RecordingIORegistry::mach_port_deallocate(mach_port_t port)
{
    release(RegistryCall::mach_port_deallocate, port);
}

kern_return_t RecordingIORegistry::IOServiceOpen(io_object_t service, std::uint32_t type, io_connect_t& connection)
{
    if (!begin({ .call = RegistryCall::IOServiceOpen, .handle = service, .index = type }))
        return KERN_FAILURE;
    if (!m_held.contains(service))
        return finish(false, 0);
    connection = hold();
    return finish(true, connection);
}

void RecordingIORegistry::IOServiceClose(io_connect_t connection)
{
    release(RegistryCall::IOServiceClose, connection);
}

kern_return_t RecordingIORegistry::IOConnectMethodStructureIStructureO(io_connect_t connection, std::uint32_t index,
    std::span<const std::byte> input, std::uint32_t& outputSize, std::span<std::byte> output)
{
    const std::uint32_t capacity = outputSize;
    outputSize = 0;
    if (!begin({ .call = RegistryCall::IOConnectMethodStructureIStructureO,
            .handle = connection,
            .index = index,
            .input = { input.begin(), input.end() },
            .capacity = capacity,
            .outputBufferSize = output.size() }))
        return KERN_FAILURE;
    if (!m_held.contains(connection))
        return finish(false, 0);
    const RegistryAnswer answer = nextAnswer(index, input);
    if (!answer.succeeds)
        return finish(false, 0);
    const std::size_t fitting = std::min<std::size_t>(answer.bytes.size(), capacity);
    std::copy_n(answer.bytes.begin(), std::min(fitting, output.size()), output.begin());
    outputSize = answer.returnedLength.value_or(static_cast<std::uint32_t>(fitting));
    return finish(true, outputSize);
}

kern_return_t RecordingIORegistry::IOConnectMethodScalarIScalarO(io_connect_t connection, std::uint32_t index)
{
    if (!begin({ .call = RegistryCall::IOConnectMethodScalarIScalarO, .handle = connection, .index = index }))
        return KERN_FAILURE;
    return finish(m_held.contains(connection), 0);
}

// Records the call; false if it is scripted to fail.
bool RecordingIORegistry::begin(RecordedRegistryCall call)
{
    if (onCall)
        onCall(call);
    bool fails = false;
    for (auto& [kind, remaining] : m_failingOfKind)
        fails |= kind == call.call && --remaining == 0;
    for (int& remaining : m_failingOfAll)
        fails |= --remaining == 0;
    call.failed = fails;
    calls.push_back(std::move(call));
    return !fails;
}

std::uint32_t RecordingIORegistry::hold()
{
    m_held.insert(++m_lastHandle);
    return m_lastHandle;
}

void RecordingIORegistry::release(RegistryCall call, std::uint32_t handle)
{
    if (!begin({ .call = call, .handle = handle }))
        return;
    m_held.erase(handle);
    m_servicesLeft.erase(handle);
}

RegistryAnswer RecordingIORegistry::nextAnswer(std::uint32_t oid, std::span<const std::byte> input)
{
    if (const auto once = m_onceAnswers.find(oid); once != m_onceAnswers.end() && !once->second.empty()) {
        RegistryAnswer answer = std::move(once->second.front());
        once->second.erase(once->second.begin());
        return answer;
    }
    const auto standing = m_answers.find(oid);
    return standing == m_answers.end() ? otherwise : standing->second(input);
}

// calls.back() is the current call: answers make no calls of their own.
kern_return_t RecordingIORegistry::finish(bool succeeded, std::uint32_t result)
{
    calls.back().failed = !succeeded;
    calls.back().result = result;
    return succeeded ? KERN_SUCCESS : KERN_FAILURE;
}
