#include "platform/registry/UserClient.h"

#include "platform/registry/DriverReply.h"
#include "platform/registry/RegistryDirectory.h"
#include "posix/SystemError.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/time.h>

namespace {

using std::chrono::microseconds;
using std::chrono::milliseconds;

// False once the deadline has passed.
bool waitFor(const FileDescriptor& socket, short events, UserClient::Deadline deadline)
{
    pollfd watched { socket.get(), events, 0 };
    for (;;) {
        const auto left = std::chrono::ceil<milliseconds>(deadline - std::chrono::steady_clock::now()).count();
        const int ready = ::poll(&watched, 1, static_cast<int>(std::max<milliseconds::rep>(left, 0)));
        if (ready >= 0 || errno != EINTR)
            return ready > 0;
    }
}

bool isTransient(std::error_code error)
{
    return error == std::errc::interrupted || error == std::errc::resource_unavailable_try_again;
}

// The connection queue of a listening socket cannot be polled, so connect itself has to wait, in blocking mode.
bool connectInTime(const FileDescriptor& socket, const FileDescriptor& instance, UserClient::Deadline deadline)
{
    if (::fcntl(socket.get(), F_SETFL, 0) != 0)
        return false;
    for (;;) {
        const auto left = std::chrono::ceil<microseconds>(deadline - std::chrono::steady_clock::now()).count();
        if (left <= 0)
            return false; // a timeout of zero would mean no timeout
        const timeval wait { left / 1'000'000, left % 1'000'000 };
        if (::setsockopt(socket.get(), SOL_SOCKET, SO_SNDTIMEO, &wait, sizeof(wait)) != 0)
            return false;
        const std::error_code error = connectToInstance(socket, instance);
        if (!isTransient(error))
            return !error;
    }
}

} // namespace

UserClient::UserClient(const FileDescriptor& instance, Deadline deadline)
{
    FileDescriptor socket = makeClientSocket();
    if (!socket)
        return;
    const std::error_code error = connectToInstance(socket, instance);
    if (!error || (isTransient(error) && connectInTime(socket, instance, deadline)))
        m_socket = std::move(socket);
}

std::optional<std::span<const std::byte>> UserClient::request(const DriverRequestHeader& header,
    std::span<const std::byte> input, std::span<std::byte, maxPacketSize> packetBuffer, Deadline deadline)
{
    if (!isConnected())
        return std::nullopt;
    std::optional<std::span<const std::byte>> packet;
    if (send(header, input, deadline))
        packet = receive(packetBuffer, deadline);
    const DriverReply reply = packet ? parseDriverReply(*packet, header.replyCapacity) : DriverReply();
    if (reply.status == ReplyStatus::Malformed)
        m_socket.reset();
    if (reply.status != ReplyStatus::Success)
        return std::nullopt;
    return reply.output;
}

bool UserClient::send(const DriverRequestHeader& header, std::span<const std::byte> input, Deadline deadline)
{
    // sendmsg only reads from these pointers, although they are not const.
    std::array<iovec, 2> parts { { { const_cast<DriverRequestHeader*>(&header), sizeof(header) },
        { const_cast<std::byte*>(input.data()), input.size() } } };
    msghdr message {};
    message.msg_iov = parts.data();
    message.msg_iovlen = parts.size();
    while (::sendmsg(m_socket.get(), &message, MSG_NOSIGNAL | MSG_DONTWAIT) == -1) {
        if (!isTransient(lastSystemError()) || !waitFor(m_socket, POLLOUT, deadline))
            return false;
    }
    return true; // sends are all or nothing on a SOCK_SEQPACKET socket
}

std::optional<std::span<const std::byte>> UserClient::receive(
    std::span<std::byte, maxPacketSize> packetBuffer, Deadline deadline)
{
    while (waitFor(m_socket, POLLIN, deadline)) {
        // With MSG_TRUNC the result is the full length of the packet, even if the buffer is smaller.
        const ssize_t length
            = ::recv(m_socket.get(), packetBuffer.data(), packetBuffer.size(), MSG_DONTWAIT | MSG_TRUNC);
        if (length >= 0 && static_cast<std::size_t>(length) <= packetBuffer.size())
            return packetBuffer.first(static_cast<std::size_t>(length));
        if (length >= 0 || !isTransient(lastSystemError()))
            break;
    }
    return std::nullopt;
}
