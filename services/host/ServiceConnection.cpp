#include "services/host/ServiceConnection.h"

#include "services/host/TransportPackets.h"

#include <array>
#include <cerrno>
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
    // Held for as long as a notifier calls: a request may end the connection, the host, or both.
    const std::weak_ptr<Connection> weak = weak_from_this();
    const auto whileNotified = [weak](void (Connection::*what)()) {
        const auto self = weak.lock();
        if (!self)
            return;
        const bool wasNotified = std::exchange(self->m_isNotified, true);
        (self.get()->*what)();
        self->m_isNotified = wasNotified;
    };
    m_readable = std::make_unique<QSocketNotifier>(m_socket.get(), QSocketNotifier::Read);
    QObject::connect(m_readable.get(), &QSocketNotifier::activated, m_readable.get(),
        [whileNotified] { whileNotified(&Connection::readPacket); });
    m_writable = std::make_unique<QSocketNotifier>(m_socket.get(), QSocketNotifier::Write);
    m_writable->setEnabled(false);
    QObject::connect(m_writable.get(), &QSocketNotifier::activated, m_writable.get(),
        [whileNotified] { whileNotified(&Connection::writePackets); });
}

void ServiceReply::Connection::close()
{
    m_state = State::Closed;
    m_isUnanswered = false;
    m_closed = nullptr;
    discard(m_readable);
    discard(m_writable);
    m_unsent.clear();
    m_socket.reset();
}

void ServiceReply::Connection::discard(std::unique_ptr<QSocketNotifier>& notifier) const
{
    if (!notifier)
        return;
    notifier->setEnabled(false);
    if (m_isNotified)
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
    // The request is copied out before anything else can be read.
    static thread_local std::array<std::byte, requestHeaderBytes + largestPayloadBytes> packet;
    iovec block { packet.data(), packet.size() };
    msghdr message {};
    message.msg_iov = &block;
    message.msg_iovlen = 1;
    const ssize_t size = ::recvmsg(m_socket.get(), &message, 0);
    if (size < 0 && (errno == EAGAIN || errno == EINTR))
        return;
    // Nothing to read is the end of the client, and an empty packet cannot be told from it.
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
        if (sendNow(m_unsent.front())) {
            m_unsent.pop_front();
            continue;
        }
        if (errno != EAGAIN) {
            hangUp();
            return;
        }
        break;
    }
    m_writable->setEnabled(!m_unsent.empty());
}

bool ServiceReply::Connection::sendNow(std::span<const std::byte> packet)
{
    ssize_t size = 0;
    do {
        size = ::send(m_socket.get(), packet.data(), packet.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    } while (size < 0 && errno == EINTR);
    return size >= 0;
}
