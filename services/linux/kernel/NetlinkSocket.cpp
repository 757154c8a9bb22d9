#include "services/linux/kernel/NetlinkSocket.h"

#include "posix/SystemError.h"
#include "services/linux/kernel/NetlinkMessage.h"

#include <vector>

#include <netlink/genl/ctrl.h>
#include <netlink/genl/genl.h>
#include <netlink/msg.h>
#include <netlink/netlink.h>
#include <netlink/socket.h>
#include <sys/socket.h>

namespace {

constexpr int bufferBytes = 1 << 20;
constexpr std::size_t packetBytes = 1 << 16; // the kernel's largest is half of it
constexpr int maxPacketsPerRead = 64;

std::error_code errorOf(int libraryError)
{
    switch (-libraryError) {
    case 0:
        return {};
    case NLE_PERM:
    case NLE_NOACCESS:
        return std::make_error_code(std::errc::operation_not_permitted);
    case NLE_NOMEM:
        return std::make_error_code(std::errc::not_enough_memory);
    default:
        return std::make_error_code(std::errc::io_error);
    }
}

void deliver(std::span<std::byte> packet, const NetlinkSocket::Received& received)
{
    auto* head = reinterpret_cast<nlmsghdr*>(packet.data());
    int rest = static_cast<int>(packet.size());
    for (; nlmsg_ok(head, rest) != 0; head = nlmsg_next(head, &rest)) {
        const auto* const body = static_cast<const std::byte*>(nlmsg_data(head));
        received({ head->nlmsg_type, head->nlmsg_seq, { body, static_cast<std::size_t>(nlmsg_datalen(head)) } });
    }
}

struct SocketFree {
    void operator()(nl_sock* socket) const { nl_socket_free(socket); }
};
using OwnedSocket = std::unique_ptr<nl_sock, SocketFree>;

OwnedSocket resolverSocket()
{
    OwnedSocket socket(nl_socket_alloc());
    if (socket && genl_connect(socket.get()) != 0)
        socket.reset();
    return socket;
}

} // namespace

std::unique_ptr<NetlinkSocket> NetlinkSocket::open(int protocol, std::error_code& error)
{
    OwnedSocket socket(nl_socket_alloc());
    if (!socket) {
        error = std::make_error_code(std::errc::not_enough_memory);
        return nullptr;
    }
    nl_socket_disable_seq_check(socket.get());
    error = errorOf(nl_connect(socket.get(), protocol));
    if (error)
        return nullptr;
    // Without the right to a larger buffer the socket still works, and overflows earlier.
    (void)nl_socket_set_buffer_size(socket.get(), bufferBytes, bufferBytes);
    error = errorOf(nl_socket_set_nonblocking(socket.get()));
    return error ? nullptr : std::unique_ptr<NetlinkSocket>(new NetlinkSocket(socket.release()));
}

NetlinkSocket::~NetlinkSocket()
{
    nl_socket_free(m_socket);
}

int NetlinkSocket::descriptor() const
{
    return nl_socket_get_fd(m_socket);
}

std::uint32_t NetlinkSocket::send(const NetlinkMessage& message)
{
    if (message.get() == nullptr || nl_send_auto(m_socket, message.get()) < 0)
        return 0;
    return nlmsg_hdr(message.get())->nlmsg_seq;
}

std::error_code NetlinkSocket::join(int group)
{
    return errorOf(nl_socket_add_memberships(m_socket, group, 0));
}

NetlinkSocket::ReadResult NetlinkSocket::read(const Received& received)
{
    static thread_local std::vector<std::byte> packet(packetBytes);
    for (int i = 0; i < maxPacketsPerRead; ++i) {
        const ssize_t size = ::recv(descriptor(), packet.data(), packet.size(), MSG_DONTWAIT);
        if (size < 0 && errno == EINTR)
            continue;
        if (size < 0 && errno == ENOBUFS)
            return ReadResult::Overflow;
        if (size < 0 && errno == EAGAIN)
            return ReadResult::Drained;
        if (size <= 0)
            return ReadResult::Failed;
        // Copied: a callback may read from another socket.
        std::vector<std::byte> copy(packet.begin(), packet.begin() + size);
        deliver(copy, received);
    }
    return ReadResult::MoreToRead;
}

GenericFamily GenericFamily::resolve(const char* name)
{
    const OwnedSocket socket = resolverSocket();
    return { socket ? genl_ctrl_resolve(socket.get(), name) : -1 };
}

int GenericFamily::group(const char* family, const char* name)
{
    const OwnedSocket socket = resolverSocket();
    return socket ? genl_ctrl_resolve_grp(socket.get(), family, name) : -1;
}
