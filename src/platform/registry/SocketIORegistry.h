#pragma once

#include "platform/registry/HandleTable.h"
#include "platform/registry/IORegistry.h"
#include "platform/registry/UserClient.h"

#include <array>
#include <chrono>
#include <memory>
#include <set>
#include <string>
#include <vector>

enum class FolderVerdict;

// The folders in which services are looked for, in order: those of the machine, then those that the user started.
[[nodiscard]] std::vector<std::string> defaultRegistryRoots();

// The I/O registry over listening sockets ROOT/CLASS/INSTANCE (docs/driver-protocol.md). A class folder that somebody
// else could have filled is passed over, with one line on standard error when that is first seen.
class SocketIORegistry final : public IORegistry {
public:
    // replyTimeout bounds the opening of a user client and each call on it.
    explicit SocketIORegistry(
        std::vector<std::string> roots, std::chrono::milliseconds replyTimeout = std::chrono::seconds(2));

    [[nodiscard]] kern_return_t IOMasterPort(mach_port_t& masterPort) override;
    // 0 for a name that no folder can have.
    [[nodiscard]] CFDictionaryRef IOServiceMatching(std::string_view className) override;
    [[nodiscard]] kern_return_t IOServiceGetMatchingServices(
        mach_port_t masterPort, CFDictionaryRef matching, io_object_t& iterator) override;
    // A service that is still held keeps its number and is held once more.
    [[nodiscard]] io_object_t IOIteratorNext(io_object_t iterator) override;
    void IOObjectRelease(io_object_t object) override;
    void CFRelease(CFDictionaryRef dictionary) override;
    void mach_port_deallocate(mach_port_t port) override;
    [[nodiscard]] kern_return_t IOServiceOpen(
        io_object_t service, std::uint32_t type, io_connect_t& connection) override;
    void IOServiceClose(io_connect_t connection) override;
    // Fails without a request when the input is longer than 65,536 bytes; no more than that is offered for the reply.
    [[nodiscard]] kern_return_t IOConnectMethodStructureIStructureO(io_connect_t connection, std::uint32_t index,
        std::span<const std::byte> input, std::uint32_t& outputSize, std::span<std::byte> output) override;
    kern_return_t IOConnectMethodScalarIScalarO(io_connect_t connection, std::uint32_t index) override;

private:
    struct ServiceLocation {
        std::string folder; // ROOT/CLASS
        std::string instance;
        bool operator==(const ServiceLocation&) const = default;
    };
    struct Iterator {
        std::vector<ServiceLocation> found;
        std::size_t next { 0 };
    };
    // Numbered once however often it is found, so that a caller who never releases it fills no memory.
    struct Service {
        ServiceLocation location;
        std::uint64_t references { 1 };
    };

    [[nodiscard]] std::uint32_t newHandle();
    [[nodiscard]] bool mayUse(const std::string& folder, FolderVerdict verdict);
    [[nodiscard]] UserClient::Deadline deadline() const;

    std::vector<std::string> m_roots;
    std::chrono::milliseconds m_replyTimeout;
    std::uint32_t m_lastHandle { 0 };
    HandleTable<std::string> m_dictionaries; // class names
    HandleTable<Iterator> m_iterators;
    HandleTable<Service> m_services;
    HandleTable<UserClient> m_clients;
    std::set<std::string> m_distrustedFolders; // those that have had their line on standard error
    std::unique_ptr<std::array<std::byte, UserClient::packetRoom>> m_packetBuffer;
};
