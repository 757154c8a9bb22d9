#pragma once

#include "services/linux/kernel/NetlinkSocket.h"

#include <QSocketNotifier>

#include <functional>
#include <memory>
#include <system_error>
#include <vector>

// Multicast messages of the kernel, on a socket of their own.
class NetlinkEvents {
    Q_DISABLE_COPY_MOVE(NetlinkEvents)

public:
    using Received = NetlinkSocket::Received;
    using Missed = std::function<void()>;

    // missed is called when messages were lost: whatever they said has to be read anew.
    NetlinkEvents(Received received, Missed missed)
        : m_received(std::move(received))
        , m_missed(std::move(missed))
    {
    }
    ~NetlinkEvents() = default;

    [[nodiscard]] std::error_code listen(int protocol, const std::vector<int>& groups);
    // False before listen(), and after the socket failed.
    [[nodiscard]] bool isListening() const { return m_notifier && m_notifier->isEnabled(); }

private:
    void read();

    Received m_received;
    Missed m_missed;
    std::unique_ptr<NetlinkSocket> m_socket;
    std::unique_ptr<QSocketNotifier> m_notifier;
};
