#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

// Handles are numbers; 0 is none. Releasing a number that is not held, or no longer, is harmless.
using mach_port_t = std::uint32_t;
using io_object_t = std::uint32_t; // an iterator or a service
using io_connect_t = std::uint32_t; // an open user client
using CFDictionaryRef = std::uint32_t; // a matching dictionary

// 0 is success, anything else a failure.
using kern_return_t = std::int32_t;
inline constexpr kern_return_t KERN_SUCCESS = 0;
inline constexpr kern_return_t KERN_FAILURE = 5;

// The I/O registry and its user clients. Serial, main thread only. docs/driver-protocol.md has the transport beneath.
class IORegistry {
public:
    virtual ~IORegistry() = default;

    [[nodiscard]] virtual kern_return_t IOMasterPort(mach_port_t& masterPort) = 0;
    // 0 when no dictionary could be made.
    [[nodiscard]] virtual CFDictionaryRef IOServiceMatching(std::string_view className) = 0;
    // Consumes the dictionary, whatever the result. Every search looks afresh.
    [[nodiscard]] virtual kern_return_t IOServiceGetMatchingServices(
        mach_port_t masterPort, CFDictionaryRef matching, io_object_t& iterator)
        = 0;
    // The next service, 0 at the end.
    [[nodiscard]] virtual io_object_t IOIteratorNext(io_object_t iterator) = 0;
    virtual void IOObjectRelease(io_object_t object) = 0;
    virtual void CFRelease(CFDictionaryRef dictionary) = 0;
    virtual void mach_port_deallocate(mach_port_t port) = 0;

    // Opens a user client of the given connection type for this process.
    [[nodiscard]] virtual kern_return_t IOServiceOpen(io_object_t service, std::uint32_t type, io_connect_t& connection)
        = 0;
    virtual void IOServiceClose(io_connect_t connection) = 0;

    // One request. outputSize is the reply capacity on entry and the number of bytes that the driver returned on exit.
    // On failure output is left as it was and outputSize is 0. No more than output.size() bytes are ever written, even
    // where the capacity promises more. input and output may be the same memory.
    [[nodiscard]] virtual kern_return_t IOConnectMethodStructureIStructureO(io_connect_t connection,
        std::uint32_t index, std::span<const std::byte> input, std::uint32_t& outputSize, std::span<std::byte> output)
        = 0;
    // A call without arguments and results.
    virtual kern_return_t IOConnectMethodScalarIScalarO(io_connect_t connection, std::uint32_t index) = 0;
};
