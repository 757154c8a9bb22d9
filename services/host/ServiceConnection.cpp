#include "services/host/ServiceConnection.h"

#include "posix/SystemError.h"
#include "services/host/TransportPackets.h"

#include <array>
#include <utility>

#include <sys/socket.h>
#include <sys/uio.h>

ServiceReply::Connection::Connection(
    FileDescriptor socket, std::shared_ptr<const ServiceHost::Handler> handler, Closed closed)
    : m_socket(std::move(socket))
    , m_handler(std::move(handler))
    , m_closed(std::move(closed))
{
}

void ServiceReply::Connection::start()
{
    // Keeps the connection alive during the call: a request may close the connection, destroy the host, or both.
    const std::weak_ptr<Connection> weak = weak_from_this();
    const auto inNotifier = [weak](void (Connection::*function)()) {
        const auto self = weak.lock();
        if (!self)
            return;
        const bool wasInNotifier = std::exchange(self->m_isInNotifier, true);
        (self.get()->*function)();
        self->m_isInNotifier = wasInNotifier;
    };
    m_readable = std::make_unique<QSocketNotifier>(m_socket.get(), QSocketNotifier::Read);
    QObject::connect(m_readable.get(), &QSocketNotifier::activated, m_readable.get(),
        [inNotifier] { inNotifier(&Connection::readPacket); });
    m_writable = std::make_unique<QSocketNotifier>(m_socket.get(), QSocketNotifier::Write);
    m_writable->setEnabled(false);
    QObject::connect(m_writable.get(), &QSocketNotifier::activated, m_writable.get(),
        [inNotifier] { inNotifier(&Connection::writePackets); });
}

void ServiceReply::Connection::close()
{
    m_state = State::Closed;
    m_isUnanswered = false;
    m_closed = nullptr;
    deleteNotifier(m_readable);
    deleteNotifier(m_writable);
    m_unsent.clear();
    m_socket.reset();
}

void ServiceReply::Connection::deleteNotifier(std::unique_ptr<QSocketNotifier>& notifier) const
{
    if (!notifier)
        return;
    notifier->setEnabled(false);
    if (m_isInNotifier)
        notifier.release()->deleteLater();
    else
        notifier.reset();
}

void ServiceReply::Connection::hangUp()
{
    const auto self = shared_from_this();
    const Closed closed = std::move(m_closed);
    close();
    if (closed)
        closed(self);
}

void ServiceReply::Connection::readPacket()
{
    // Shared by all connections of the thread: servePacket() copies the request before another read can happen.
    static thread_local std::array<std::byte, requestHeaderBytes + maxPayloadBytes> packet;
    iovec block { packet.data(), packet.size() };
    msghdr message {};
    message.msg_iov = &block;
    message.msg_iovlen = 1;
    const ssize_t size = ::recvmsg(m_socket.get(), &message, 0);
    if (size < 0 && (errno == EAGAIN || errno == EINTR))
        return;
    // recvmsg() returns 0 both at the end of the connection and for an empty packet, which is malformed anyway.
    if (size <= 0 || (message.msg_flags & MSG_TRUNC) != 0) {
        hangUp();
        return;
    }
    servePacket(std::span(packet).first(static_cast<std::size_t>(size)));
}

void ServiceReply::Connection::servePacket(std::span<const std::byte> packet)
{
    const auto request = parseRequest(packet);
    if (!request || m_isUnanswered || !m_unsent.empty() || !isInTurn(request->kind)) {
        hangUp();
        return;
    }
    if (request->kind == RequestKind::Open)
        m_state = State::Opening;
    ++m_requestNumber;
    m_isUnanswered = true;
    const auto handler = m_handler;
    (*handler)(*request, ServiceReply(weak_from_this(), request->replyCapacity));
}

bool ServiceReply::Connection::isInTurn(RequestKind kind) const
{
    switch (kind) {
    case RequestKind::Open:
        return m_state == State::New;
    case RequestKind::StructureCall:
    case RequestKind::ScalarCall:
        return m_state == State::Open;
    }
    return false;
}

void ServiceReply::Connection::answer(std::vector<std::byte> packet)
{
    if (m_state == State::Closed)
        return;
    if (m_state == State::Opening)
        m_state = isSuccessReply(packet) ? State::Open : State::Refused;
    m_isUnanswered = false;
    m_unsent.push_back(std::move(packet));
    writePackets();
}

void ServiceReply::Connection::writePackets()
{
    while (!m_unsent.empty()) {
        const std::error_code error = sendNow(m_unsent.front());
        if (error == std::errc::resource_unavailable_try_again)
            break;
        if (error) {
            hangUp();
            return;
        }
        m_unsent.pop_front();
    }
    m_writable->setEnabled(!m_unsent.empty());
}

std::error_code ServiceReply::Connection::sendNow(std::span<const std::byte> packet)
{
    ssize_t size = 0;
    do {
        size = ::send(m_socket.get(), packet.data(), packet.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    } while (size < 0 && errno == EINTR);
    return size < 0 ? lastSystemError() : std::error_code();
}
