#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

// Handles are numbers; 0 means no handle. Releasing a handle that is not held is a no-op.
using mach_port_t = std::uint32_t;
using io_object_t = std::uint32_t; // an iterator or a service
using io_connect_t = std::uint32_t; // an open user client
using CFDictionaryRef = std::uint32_t; // a matching dictionary

// 0 is success, anything else a failure.
using kern_return_t = std::int32_t;
inline constexpr kern_return_t KERN_SUCCESS = 0;
inline constexpr kern_return_t KERN_FAILURE = 5;

// The I/O registry and its user clients. Main thread only. docs/driver-protocol.md describes the transport.
class IORegistry {
public:
    virtual ~IORegistry() = default;

    [[nodiscard]] virtual kern_return_t IOMasterPort(mach_port_t& masterPort) = 0;
    // 0 on failure.
    [[nodiscard]] virtual CFDictionaryRef IOServiceMatching(std::string_view className) = 0;
    // Consumes the dictionary, even on failure. Nothing is cached between searches.
    [[nodiscard]] virtual kern_return_t IOServiceGetMatchingServices(
        mach_port_t masterPort, CFDictionaryRef matching, io_object_t& iterator)
        = 0;
    // The next service; 0 at the end.
    [[nodiscard]] virtual io_object_t IOIteratorNext(io_object_t iterator) = 0;
    virtual void IOObjectRelease(io_object_t object) = 0;
    virtual void CFRelease(CFDictionaryRef dictionary) = 0;
    virtual void mach_port_deallocate(mach_port_t port) = 0;

    // Opens a user client of the given connection type for this process.
    [[nodiscard]] virtual kern_return_t IOServiceOpen(io_object_t service, std::uint32_t type, io_connect_t& connection)
        = 0;
    virtual void IOServiceClose(io_connect_t connection) = 0;

    // Sends one request. outputSize is the reply capacity on entry and the number of bytes that the driver returned on
    // exit. On failure output is unchanged and outputSize is 0. Never writes more than output.size() bytes, even if the
    // capacity is larger. input and output may overlap.
    [[nodiscard]] virtual kern_return_t IOConnectMethodStructureIStructureO(io_connect_t connection,
        std::uint32_t index, std::span<const std::byte> input, std::uint32_t& outputSize, std::span<std::byte> output)
        = 0;
    // A call without arguments or results.
    virtual kern_return_t IOConnectMethodScalarIScalarO(io_connect_t connection, std::uint32_t index) = 0;
};
