#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <system_error>

struct nl_sock;
class NetlinkMessage;

struct NetlinkReply {
    std::uint16_t type { 0 };
    std::uint32_t sequence { 0 };
    std::span<const std::byte> body; // valid during the call
};

// A non-blocking netlink socket with a buffer of 1 MB.
class NetlinkSocket {
public:
    enum class ReadResult {
        Drained, // nothing left to read
        MoreToRead, // the limit of one call was reached; the descriptor is still readable
        Overflow, // the kernel dropped messages because the buffer was full
        Failed,
    };
    using Received = std::function<void(const NetlinkReply&)>;

    // protocol: NETLINK_GENERIC or NETLINK_ROUTE.
    [[nodiscard]] static std::unique_ptr<NetlinkSocket> open(int protocol, std::error_code& error);
    ~NetlinkSocket();
    NetlinkSocket(const NetlinkSocket&) = delete;
    NetlinkSocket& operator=(const NetlinkSocket&) = delete;

    [[nodiscard]] int descriptor() const;
    // The sequence number of the request; 0 if it could not be sent.
    [[nodiscard]] std::uint32_t send(const NetlinkMessage& message);
    [[nodiscard]] std::error_code join(int group);

    // Reads a limited number of packets, so that a busy kernel cannot keep the caller here.
    [[nodiscard]] ReadResult read(const Received& received);

private:
    explicit NetlinkSocket(nl_sock* socket)
        : m_socket(socket)
    {
    }

    nl_sock* m_socket;
};

// The number of a generic netlink family, and of one of its multicast groups. Negative if there is none: the kernel has
// not loaded it.
struct GenericFamily {
    int id { -1 };

    [[nodiscard]] static GenericFamily resolve(const char* name);
    [[nodiscard]] static int group(const char* family, const char* name);
};

inline constexpr std::size_t genericHeaderBytes = 4; // command, version, reserved
