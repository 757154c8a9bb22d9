#include "platform/registry/SocketIORegistry.h"

#include "app/shared/Trace.h"
#include "platform/registry/RegistryDirectory.h"

#include <QFile>
#include <QStandardPaths>

#include <algorithm>
#include <utility>

namespace {

constexpr char machineRoot[] = "/run/io-registry";
constexpr char userRootSuffix[] = "/io-registry";

bool isDirectoryName(std::string_view name)
{
    return !name.empty() && name != "." && name != ".." && name.find('/') == std::string_view::npos
        && name.find('\0') == std::string_view::npos;
}

// nullptr if there is none.
const char* reasonToSkip(DirectoryTrust trust)
{
    switch (trust) {
    case DirectoryTrust::Trusted:
    case DirectoryTrust::Missing:
        break;
    case DirectoryTrust::NotReadable:
        return "it is no folder that can be read";
    case DirectoryTrust::ForeignOwner:
        return "it belongs to neither root nor the user";
    case DirectoryTrust::WritableByOthers:
        return "group or others may write to it";
    }
    return nullptr;
}

// nullptr if the handle is not held.
auto* valueOf(auto& handles, std::uint32_t handle)
{
    const auto held = handles.find(handle);
    return held == handles.end() ? nullptr : &held->second;
}

} // namespace

std::vector<std::string> defaultRegistryRoots()
{
    std::vector<std::string> roots { machineRoot };
    const QString runtimeDirectory = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (!runtimeDirectory.isEmpty())
        roots.push_back(QFile::encodeName(runtimeDirectory).toStdString() + userRootSuffix);
    return roots;
}

SocketIORegistry::SocketIORegistry(std::vector<std::string> roots, std::chrono::milliseconds requestTimeout)
    : m_roots(std::move(roots))
    , m_requestTimeout(requestTimeout)
    , m_packetBuffer(std::make_unique<std::array<std::byte, UserClient::maxPacketSize>>())
{
}

// The port is only a number; the transport does not need one.
kern_return_t SocketIORegistry::IOMasterPort(mach_port_t& masterPort)
{
    masterPort = newHandle();
    return KERN_SUCCESS;
}

void SocketIORegistry::mach_port_deallocate(mach_port_t /*port*/) { }

CFDictionaryRef SocketIORegistry::IOServiceMatching(std::string_view className)
{
    if (!isDirectoryName(className))
        return 0;
    const CFDictionaryRef dictionary = newHandle();
    m_dictionaries.emplace(dictionary, className);
    return dictionary;
}

void SocketIORegistry::CFRelease(CFDictionaryRef dictionary)
{
    m_dictionaries.erase(dictionary);
}

kern_return_t SocketIORegistry::IOServiceGetMatchingServices(
    mach_port_t /*masterPort*/, CFDictionaryRef matching, io_object_t& iterator)
{
    iterator = 0;
    const auto dictionary = m_dictionaries.extract(matching);
    if (dictionary.empty())
        return KERN_FAILURE;

    Iterator result;
    for (const std::string& root : m_roots) {
        const std::string path = root + '/' + dictionary.mapped();
        RegistryDirectory directory = openRegistryDirectory(path);
        if (!isUsable(path, directory.trust))
            continue;
        for (std::string& instance : liveServices(std::move(directory.descriptor)))
            result.found.push_back({ path, std::move(instance) });
    }
    iterator = newHandle();
    m_iterators.emplace(iterator, std::move(result));
    return KERN_SUCCESS;
}

io_object_t SocketIORegistry::IOIteratorNext(io_object_t iterator)
{
    Iterator* const held = valueOf(m_iterators, iterator);
    if (held == nullptr || held->next == held->found.size())
        return 0;
    ServiceLocation& location = held->found[held->next++];
    for (auto& [handle, service] : m_services) {
        if (service.location == location) {
            ++service.references;
            return handle;
        }
    }
    const io_object_t service = newHandle();
    m_services.emplace(service, Service { std::move(location) });
    return service;
}

void SocketIORegistry::IOObjectRelease(io_object_t object)
{
    if (Service* const service = valueOf(m_services, object)) {
        if (--service->references == 0)
            m_services.erase(object);
    } else {
        m_iterators.erase(object);
    }
}

kern_return_t SocketIORegistry::IOServiceOpen(io_object_t service, std::uint32_t type, io_connect_t& connection)
{
    connection = 0;
    const Service* const held = valueOf(m_services, service);
    if (held == nullptr || m_silentServices->isSilent(held->location))
        return KERN_FAILURE;
    const UserClient::Deadline deadline = std::chrono::steady_clock::now() + m_requestTimeout;
    // Checked again: the directory may have changed since the service was found.
    const RegistryDirectory directory = openRegistryDirectory(held->location.directory);
    if (directory.trust != DirectoryTrust::Trusted)
        return KERN_FAILURE;
    const FileDescriptor instance = openInstance(directory.descriptor.get(), held->location.instance.c_str());
    if (!instance)
        return KERN_FAILURE;
    Client client { UserClient(instance, deadline), held->location, deadline };
    if (!call(client, { DriverRequestKind::Open, type, 0, 0 }, {}))
        return KERN_FAILURE;
    connection = newHandle();
    m_clients.emplace(connection, std::move(client));
    return KERN_SUCCESS;
}

void SocketIORegistry::IOServiceClose(io_connect_t connection)
{
    if (const Client* const client = valueOf(m_clients, connection);
        client && client->hasCalled && !client->hasTimedOut)
        m_silentServices->requestAnswered(client->location);
    m_clients.erase(connection);
}

kern_return_t SocketIORegistry::IOConnectMethodStructureIStructureO(io_connect_t connection, std::uint32_t index,
    std::span<const std::byte> input, std::uint32_t& outputSize, std::span<std::byte> output)
{
    // Callers that expect no reply may pass any value.
    const std::uint32_t capacity = std::min(outputSize, maxTransferSize);
    outputSize = 0;
    Client* const client = valueOf(m_clients, connection);
    if (client == nullptr || input.size() > maxTransferSize)
        return KERN_FAILURE;
    const DriverRequestHeader header { DriverRequestKind::StructureCall, index,
        static_cast<std::uint32_t>(input.size()), capacity };
    client->hasCalled = true;
    const auto returned = call(*client, header, input);
    if (!returned)
        return KERN_FAILURE;
    std::copy_n(returned->begin(), std::min(returned->size(), output.size()), output.begin());
    outputSize = static_cast<std::uint32_t>(returned->size());
    return KERN_SUCCESS;
}

kern_return_t SocketIORegistry::IOConnectMethodScalarIScalarO(io_connect_t connection, std::uint32_t index)
{
    Client* const client = valueOf(m_clients, connection);
    if (client == nullptr)
        return KERN_FAILURE;
    const DriverRequestHeader header { DriverRequestKind::ScalarCall, index, 0, 0 };
    return call(*client, header, {}) ? KERN_SUCCESS : KERN_FAILURE;
}

std::optional<std::span<const std::byte>> SocketIORegistry::call(
    Client& client, const DriverRequestHeader& header, std::span<const std::byte> input)
{
    const auto output = client.connection.request(header, input, *m_packetBuffer, client.deadline);
    if (!output && !client.hasTimedOut && std::chrono::steady_clock::now() >= client.deadline) {
        client.hasTimedOut = true;
        m_silentServices->requestTimedOut(client.location);
    }
    return output;
}

// All kinds of handles share one counter, so a handle of one kind is never valid for another. A handle is reused only
// after the counter wraps around, and never while it is held.
std::uint32_t SocketIORegistry::newHandle()
{
    do {
        ++m_lastHandle;
    } while (m_lastHandle == 0 || m_services.contains(m_lastHandle) || m_clients.contains(m_lastHandle)
        || m_iterators.contains(m_lastHandle) || m_dictionaries.contains(m_lastHandle));
    return m_lastHandle;
}

bool SocketIORegistry::isUsable(const std::string& directory, DirectoryTrust trust)
{
    const char* const reason = reasonToSkip(trust);
    if (reason == nullptr)
        m_reportedDirectories.erase(directory);
    else if (m_reportedDirectories.insert(directory).second)
        traceAlways("!!!! SocketIORegistry - %s is passed over: %s. !!!!\n", directory.c_str(), reason);
    return trust == DirectoryTrust::Trusted;
}
