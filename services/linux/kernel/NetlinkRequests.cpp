#include "services/linux/kernel/NetlinkRequests.h"

#include <cerrno>
#include <cstring>
#include <utility>

#include <linux/netlink.h>

NetlinkRequests::NetlinkRequests(int protocol)
    : m_protocol(protocol)
{
    m_timeout.setSingleShot(true);
    m_timeout.setInterval(timeoutMs);
    QObject::connect(&m_timeout, &QTimer::timeout, &m_timeout, [this] {
        // A late answer must not be taken for that of the next request.
        m_notifier.reset();
        m_socket.reset();
        finish(ETIMEDOUT);
    });
}

void NetlinkRequests::open()
{
    std::error_code error;
    m_socket = NetlinkSocket::open(m_protocol, error);
    if (!m_socket)
        return;
    m_notifier = std::make_unique<QSocketNotifier>(m_socket->descriptor(), QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { read(); });
}

void NetlinkRequests::send(NetlinkMessage message, Completion completion)
{
    if (m_queue.size() >= maxQueued) {
        completion({ EAGAIN, {} });
        return;
    }
    m_queue.push_back({ std::move(message), std::move(completion), 0, {} });
    if (m_queue.size() == 1)
        sendNext();
}

void NetlinkRequests::sendNext()
{
    if (m_queue.empty())
        return;
    if (!m_socket)
        open();
    Request& request = m_queue.front();
    if (m_socket)
        request.sequence = m_socket->send(request.message);
    if (request.sequence != 0)
        m_timeout.start();
    else
        QTimer::singleShot(0, &m_timeout, [this] { finish(EIO); });
}

void NetlinkRequests::read()
{
    switch (m_socket->read([this](const NetlinkReply& reply) { receive(reply); })) {
    case NetlinkSocket::ReadResult::Drained:
    case NetlinkSocket::ReadResult::MoreToRead:
        break;
    case NetlinkSocket::ReadResult::Overflow:
        finish(ENOBUFS);
        break;
    case NetlinkSocket::ReadResult::Failed:
        finish(EIO);
        break;
    }
}

void NetlinkRequests::receive(const NetlinkReply& reply)
{
    if (m_queue.empty() || m_queue.front().sequence != reply.sequence)
        return;
    Request& request = m_queue.front();
    if (reply.type == NLMSG_DONE || reply.type == NLMSG_ERROR) {
        int error = 0;
        if (reply.body.size() >= sizeof(error))
            std::memcpy(&error, reply.body.data(), sizeof(error));
        finish(-error);
        return;
    }
    if (reply.type >= NLMSG_MIN_TYPE)
        request.result.bodies.emplace_back(reply.body.begin(), reply.body.end());
}

void NetlinkRequests::finish(int error)
{
    m_timeout.stop();
    if (m_queue.empty())
        return;
    Request request = std::move(m_queue.front());
    m_queue.pop_front();
    request.result.error = error;
    sendNext();
    request.completion(request.result);
}
