#pragma once

#include "platform/registry/IORegistry.h"
#include "platform/registry/SilentServices.h"
#include "platform/registry/UserClient.h"

#include <array>
#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

enum class DirectoryTrust;

// The directories to search, in order: services of the machine, then services started by the user.
[[nodiscard]] std::vector<std::string> defaultRegistryRoots();

// The I/O registry on top of listening sockets ROOT/CLASS/INSTANCE (docs/driver-protocol.md). An unsafe class
// directory (unreadable, owned by another user, or writable by others) is skipped. It is reported once on standard
// error, and again only after it was safe or missing in between.
class SocketIORegistry final : public IORegistry {
public:
    // requestTimeout applies to a request as a whole: opening a user client and the calls on it. A service that lets a
    // request time out is refused immediately until it answers again (SilentServices).
    explicit SocketIORegistry(
        std::vector<std::string> roots, std::chrono::milliseconds requestTimeout = std::chrono::seconds(2));

    [[nodiscard]] kern_return_t IOMasterPort(mach_port_t& masterPort) override;
    // 0 for a name that cannot be that of a directory.
    [[nodiscard]] CFDictionaryRef IOServiceMatching(std::string_view className) override;
    [[nodiscard]] kern_return_t IOServiceGetMatchingServices(
        mach_port_t masterPort, CFDictionaryRef matching, io_object_t& iterator) override;
    // A service that is still held keeps its handle and gains a reference.
    [[nodiscard]] io_object_t IOIteratorNext(io_object_t iterator) override;
    void IOObjectRelease(io_object_t object) override;
    void CFRelease(CFDictionaryRef dictionary) override;
    void mach_port_deallocate(mach_port_t port) override;
    [[nodiscard]] kern_return_t IOServiceOpen(
        io_object_t service, std::uint32_t type, io_connect_t& connection) override;
    void IOServiceClose(io_connect_t connection) override;
    // Fails without a request if the input exceeds maxTransferSize. The reply capacity is limited to it as well.
    [[nodiscard]] kern_return_t IOConnectMethodStructureIStructureO(io_connect_t connection, std::uint32_t index,
        std::span<const std::byte> input, std::uint32_t& outputSize, std::span<std::byte> output) override;
    kern_return_t IOConnectMethodScalarIScalarO(io_connect_t connection, std::uint32_t index) override;

private:
    struct Iterator {
        std::vector<ServiceLocation> found;
        std::size_t next { 0 };
    };
    // One handle for all finds of a service, so a caller that never releases it does not exhaust memory.
    struct Service {
        ServiceLocation location;
        std::uint64_t references { 1 };
    };
    struct Client {
        UserClient connection;
        ServiceLocation location;
        UserClient::Deadline deadline; // of the whole request
        bool hasCalled { false }; // beyond opening
        bool hasTimedOut { false };
    };

    template <typename Value> using Handles = std::map<std::uint32_t, Value>;

    [[nodiscard]] std::uint32_t newHandle();
    [[nodiscard]] bool isUsable(const std::string& directory, DirectoryTrust trust);
    [[nodiscard]] std::optional<std::span<const std::byte>> call(
        Client& client, const DriverRequestHeader& header, std::span<const std::byte> input);

    std::vector<std::string> m_roots;
    std::chrono::milliseconds m_requestTimeout;
    std::uint32_t m_lastHandle { 0 };
    Handles<std::string> m_dictionaries; // class names
    Handles<Iterator> m_iterators;
    Handles<Service> m_services;
    Handles<Client> m_clients;
    std::unique_ptr<SilentServices> m_silentServices { std::make_unique<SilentServices>() };
    std::set<std::string> m_reportedDirectories; // skipped ones, already on standard error
    std::unique_ptr<std::array<std::byte, UserClient::maxPacketSize>> m_packetBuffer;
};
