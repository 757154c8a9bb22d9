#include "platform/registry/SocketIORegistry.h"

#include "app/shared/Trace.h"
#include "platform/registry/RegistryFolder.h"

#include <QFile>
#include <QStandardPaths>

#include <algorithm>
#include <utility>

namespace {

constexpr char machineRoot[] = "/run/io-registry";
constexpr char userRootName[] = "/io-registry";

bool isFolderName(std::string_view name)
{
    return !name.empty() && name != "." && name != ".." && name.find('/') == std::string_view::npos
        && name.find('\0') == std::string_view::npos;
}

const char* reasonAgainst(FolderVerdict verdict)
{
    switch (verdict) {
    case FolderVerdict::Trusted:
    case FolderVerdict::Missing:
        break;
    case FolderVerdict::NotReadable:
        return "it is no folder that can be read";
    case FolderVerdict::ForeignOwner:
        return "it belongs to neither root nor the user";
    case FolderVerdict::WritableByOthers:
        return "group or others may write to it";
    }
    return nullptr;
}

} // namespace

std::vector<std::string> defaultRegistryRoots()
{
    std::vector<std::string> roots { machineRoot };
    const QString runtimeFolder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (!runtimeFolder.isEmpty())
        roots.push_back(QFile::encodeName(runtimeFolder).toStdString() + userRootName);
    return roots;
}

SocketIORegistry::SocketIORegistry(std::vector<std::string> roots, std::chrono::milliseconds replyTimeout)
    : m_roots(std::move(roots))
    , m_replyTimeout(replyTimeout)
    , m_packetBuffer(std::make_unique<std::array<std::byte, UserClient::packetRoom>>())
{
}

// Nothing stands behind the port but its number.
kern_return_t SocketIORegistry::IOMasterPort(mach_port_t& masterPort)
{
    masterPort = newHandle();
    return KERN_SUCCESS;
}

void SocketIORegistry::mach_port_deallocate(mach_port_t /*port*/) { }

CFDictionaryRef SocketIORegistry::IOServiceMatching(std::string_view className)
{
    if (!isFolderName(className))
        return 0;
    const CFDictionaryRef dictionary = newHandle();
    m_dictionaries.insert(dictionary, std::string(className));
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
    std::string* const held = m_dictionaries.find(matching);
    if (held == nullptr)
        return KERN_FAILURE;
    const std::string className = std::move(*held);
    m_dictionaries.erase(matching);

    Iterator result;
    for (const std::string& root : m_roots) {
        const std::string path = root + '/' + className;
        RegistryFolder folder = openRegistryFolder(path);
        if (!mayUse(path, folder.verdict))
            continue;
        for (std::string& instance : liveServices(std::move(folder.descriptor)))
            result.found.push_back({ path, std::move(instance) });
    }
    iterator = newHandle();
    m_iterators.insert(iterator, std::move(result));
    return KERN_SUCCESS;
}

io_object_t SocketIORegistry::IOIteratorNext(io_object_t iterator)
{
    Iterator* const held = m_iterators.find(iterator);
    if (held == nullptr || held->next == held->found.size())
        return 0;
    ServiceLocation& location = held->found[held->next++];
    if (const io_object_t known
        = m_services.handleOf([&](const Service& service) { return service.location == location; })) {
        ++m_services.find(known)->references;
        return known;
    }
    const io_object_t service = newHandle();
    m_services.insert(service, { std::move(location) });
    return service;
}

void SocketIORegistry::IOObjectRelease(io_object_t object)
{
    if (Service* const service = m_services.find(object)) {
        if (--service->references == 0)
            m_services.erase(object);
    } else {
        m_iterators.erase(object);
    }
}

kern_return_t SocketIORegistry::IOServiceOpen(io_object_t service, std::uint32_t type, io_connect_t& connection)
{
    connection = 0;
    const Service* const held = m_services.find(service);
    if (held == nullptr)
        return KERN_FAILURE;
    const UserClient::Deadline openDeadline = deadline();
    // Looked at anew: the folder need not be what it was when the service was found.
    const RegistryFolder folder = openRegistryFolder(held->location.folder);
    if (folder.verdict != FolderVerdict::Trusted)
        return KERN_FAILURE;
    const FileDescriptor instance = openInstance(folder.descriptor.get(), held->location.instance.c_str());
    if (!instance)
        return KERN_FAILURE;
    UserClient client(instance, openDeadline);
    if (!client.request({ DriverRequestKind::Open, type, 0, 0 }, {}, *m_packetBuffer, openDeadline))
        return KERN_FAILURE;
    connection = newHandle();
    m_clients.insert(connection, std::move(client));
    return KERN_SUCCESS;
}

void SocketIORegistry::IOServiceClose(io_connect_t connection)
{
    m_clients.erase(connection);
}

kern_return_t SocketIORegistry::IOConnectMethodStructureIStructureO(io_connect_t connection, std::uint32_t index,
    std::span<const std::byte> input, std::uint32_t& outputSize, std::span<std::byte> output)
{
    // Callers that expect no reply leave any number here.
    const std::uint32_t capacity = std::min(outputSize, largestTransfer);
    outputSize = 0;
    UserClient* const client = m_clients.find(connection);
    if (client == nullptr || input.size() > largestTransfer)
        return KERN_FAILURE;
    const DriverRequestHeader header { DriverRequestKind::StructureCall, index,
        static_cast<std::uint32_t>(input.size()), capacity };
    const auto returned = client->request(header, input, *m_packetBuffer, deadline());
    if (!returned)
        return KERN_FAILURE;
    std::copy_n(returned->begin(), std::min(returned->size(), output.size()), output.begin());
    outputSize = static_cast<std::uint32_t>(returned->size());
    return KERN_SUCCESS;
}

kern_return_t SocketIORegistry::IOConnectMethodScalarIScalarO(io_connect_t connection, std::uint32_t index)
{
    UserClient* const client = m_clients.find(connection);
    if (client == nullptr)
        return KERN_FAILURE;
    const DriverRequestHeader header { DriverRequestKind::ScalarCall, index, 0, 0 };
    return client->request(header, {}, *m_packetBuffer, deadline()) ? KERN_SUCCESS : KERN_FAILURE;
}

// Handles of every kind are numbered in one row: none is used again before all have been, nor while it is held.
std::uint32_t SocketIORegistry::newHandle()
{
    do {
        ++m_lastHandle;
    } while (m_lastHandle == 0 || m_services.find(m_lastHandle) != nullptr || m_clients.find(m_lastHandle) != nullptr
        || m_iterators.find(m_lastHandle) != nullptr || m_dictionaries.find(m_lastHandle) != nullptr);
    return m_lastHandle;
}

bool SocketIORegistry::mayUse(const std::string& folder, FolderVerdict verdict)
{
    const char* const reason = reasonAgainst(verdict);
    if (reason == nullptr)
        m_distrustedFolders.erase(folder);
    else if (m_distrustedFolders.insert(folder).second)
        traceAlways("!!!! SocketIORegistry - %s is passed over: %s. !!!!\n", folder.c_str(), reason);
    return verdict == FolderVerdict::Trusted;
}

UserClient::Deadline SocketIORegistry::deadline() const
{
    return std::chrono::steady_clock::now() + m_replyTimeout;
}
