#include "services/linux/kernel/NetlinkRequests.h"

#include <cerrno>
#include <cstring>
#include <utility>

#include <linux/netlink.h>

NetlinkRequests::NetlinkRequests(int protocol, std::size_t answerLimit)
    : m_protocol(protocol)
    , m_answerLimit(answerLimit)
{
    m_timeout.setSingleShot(true);
    m_timeout.setInterval(timeoutMs);
    QObject::connect(&m_timeout, &QTimer::timeout, &m_timeout, [this] {
        close();
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
        QTimer::singleShot(0, &m_timeout, [completion = std::move(completion)] { completion({ EAGAIN, {} }); });
        return;
    }
    m_queue.push_back({ std::move(message), std::move(completion), 0, {}, 0 });
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
        if (m_queue.empty() || m_queue.front().answerBytes <= m_answerLimit)
            break;
        close();
        finish(EMSGSIZE);
        break;
    case NetlinkSocket::ReadResult::Overflow:
        close();
        finish(ENOBUFS);
        break;
    case NetlinkSocket::ReadResult::Failed:
        close();
        finish(EIO);
        break;
    }
}

// The rest of an answer must not be taken for that of the next request.
void NetlinkRequests::close()
{
    if (m_notifier) {
        m_notifier->setEnabled(false);
        m_notifier.release()->deleteLater(); // it may be on the call stack
    }
    m_socket.reset();
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
        finish(request.answerBytes > m_answerLimit ? EMSGSIZE : -error);
        return;
    }
    request.answerBytes += reply.body.size();
    if (reply.type >= NLMSG_MIN_TYPE && request.answerBytes <= m_answerLimit)
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
