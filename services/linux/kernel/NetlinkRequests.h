#pragma once

#include "services/linux/kernel/NetlinkMessage.h"
#include "services/linux/kernel/NetlinkSocket.h"

#include <QSocketNotifier>
#include <QTimer>

#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <vector>

struct NetlinkResult {
    int error { 0 }; // errno; 0 on success
    std::vector<std::vector<std::byte>> bodies;
};

// Sends requests one after the other and calls back with the answer from the event loop. A request fails with ETIMEDOUT
// after timeoutMs, and with ENOBUFS if the kernel had more to say than the buffer holds.
class NetlinkRequests {
    Q_DISABLE_COPY_MOVE(NetlinkRequests)

public:
    using Completion = std::function<void(const NetlinkResult&)>;
    static constexpr int timeoutMs = 3000;
    // More requests than this mean that the kernel does not answer; further ones fail at once.
    static constexpr std::size_t maxQueued = 64;

    explicit NetlinkRequests(int protocol);
    ~NetlinkRequests() = default;

    void send(NetlinkMessage message, Completion completion);

private:
    struct Request {
        NetlinkMessage message;
        Completion completion;
        std::uint32_t sequence { 0 };
        NetlinkResult result;
    };

    void open();
    void sendNext();
    void read();
    void receive(const NetlinkReply& reply);
    void finish(int error);

    int m_protocol;
    std::unique_ptr<NetlinkSocket> m_socket;
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::deque<Request> m_queue; // the first one was sent if its sequence is not 0
    QTimer m_timeout;
};
