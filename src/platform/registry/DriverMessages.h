#pragma once

#include <cstddef>
#include <cstdint>

// The packets between the utility and a driver service, in host byte order (docs/driver-protocol.md).

enum class DriverRequestKind : std::uint32_t {
    Open = 0,
    StructureCall = 1,
    ScalarCall = 2,
};

struct DriverRequestHeader {
    DriverRequestKind kind;
    std::uint32_t selector; // connection type for open, method index for calls
    std::uint32_t inputSize; // bytes that follow; 0 for open and scalar calls
    std::uint32_t replyCapacity; // bytes; 0 for open and scalar calls
};
static_assert(sizeof(DriverRequestHeader) == 16);
static_assert(offsetof(DriverRequestHeader, selector) == 4);
static_assert(offsetof(DriverRequestHeader, inputSize) == 8);
static_assert(offsetof(DriverRequestHeader, replyCapacity) == 12);

struct DriverReplyHeader {
    std::uint32_t result; // 0 is success
    std::uint32_t outputSize; // bytes that follow, at most the reply capacity
};
static_assert(sizeof(DriverReplyHeader) == 8);
static_assert(offsetof(DriverReplyHeader, outputSize) == 4);

inline constexpr std::uint32_t maxTransferSize = 65536; // bytes of input or output

inline constexpr std::uint32_t driverConnectionType = 0; // of the user client that takes the calls below
inline constexpr std::uint32_t completionMethod = 1; // the scalar call that ends every structure call
