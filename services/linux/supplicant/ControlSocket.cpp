#include "services/linux/supplicant/ControlSocket.h"

#include "posix/SystemError.h"

#include <array>
#include <cstring>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

constexpr std::size_t maxMessageBytes = 8192; // its replies end at 4 KB
constexpr int maxMessagesPerRead = 64;

std::error_code makeAddress(const std::string& path, sockaddr_un& address)
{
    if (path.size() >= sizeof(address.sun_path))
        return std::make_error_code(std::errc::filename_too_long);
    address = {};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    return {};
}

const sockaddr* generic(const sockaddr_un& address)
{
    return reinterpret_cast<const sockaddr*>(&address);
}

} // namespace

std::error_code ControlSocket::connect(const std::string& ownPath, const std::string& serverPath)
{
    close();
    sockaddr_un own {};
    sockaddr_un server {};
    if (const auto error = makeAddress(ownPath, own))
        return error;
    if (const auto error = makeAddress(serverPath, server))
        return error;
    FileDescriptor socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    (void)::unlink(ownPath.c_str());
    if (!socket || ::bind(socket.get(), generic(own), sizeof(own)) != 0)
        return lastSystemError();
    m_ownPath = ownPath;
    if (::connect(socket.get(), generic(server), sizeof(server)) != 0)
        return lastSystemError();
    m_socket = std::move(socket);
    m_notifier = std::make_unique<QSocketNotifier>(m_socket.get(), QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { read(); });
    return {};
}

void ControlSocket::close()
{
    if (m_notifier) {
        m_notifier->setEnabled(false);
        m_notifier.release()->deleteLater(); // it may be on the call stack
    }
    m_socket.reset();
    if (!m_ownPath.empty())
        (void)::unlink(m_ownPath.c_str());
    m_ownPath.clear();
}

std::error_code ControlSocket::send(std::string_view text) const
{
    if (!m_socket)
        return std::make_error_code(std::errc::not_connected);
    const ssize_t size = ::send(m_socket.get(), text.data(), text.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
    return size < 0 ? lastSystemError() : std::error_code();
}

void ControlSocket::read()
{
    std::array<char, maxMessageBytes> message {};
    for (int i = 0; i < maxMessagesPerRead && m_socket; ++i) {
        const ssize_t size = ::recv(m_socket.get(), message.data(), message.size(), MSG_DONTWAIT);
        if (size < 0 && errno != EINTR) {
            // The other end is gone; its process tells why.
            if (errno != EAGAIN)
                m_notifier->setEnabled(false);
            return;
        }
        if (size > 0)
            m_received({ message.data(), static_cast<std::size_t>(size) });
    }
}
