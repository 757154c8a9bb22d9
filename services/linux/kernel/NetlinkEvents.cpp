#include "services/linux/kernel/NetlinkEvents.h"

std::error_code NetlinkEvents::listen(int protocol, const std::vector<int>& groups)
{
    std::error_code error;
    m_notifier.reset();
    m_socket = NetlinkSocket::open(protocol, error);
    for (const int group : groups) {
        if (!error)
            error = m_socket->join(group);
    }
    if (error)
        return error;
    m_notifier = std::make_unique<QSocketNotifier>(m_socket->descriptor(), QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { read(); });
    return {};
}

void NetlinkEvents::read()
{
    switch (m_socket->read(m_received)) {
    case NetlinkSocket::ReadResult::Drained:
    case NetlinkSocket::ReadResult::MoreToRead:
        break;
    case NetlinkSocket::ReadResult::Overflow:
        m_missed();
        break;
    case NetlinkSocket::ReadResult::Failed:
        m_notifier->setEnabled(false); // it would be readable for ever
        m_missed();
        break;
    }
}
