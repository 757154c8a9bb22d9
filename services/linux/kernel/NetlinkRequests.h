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
    // More requests than this mean that the kernel does not answer; further ones fail with EAGAIN, before the others.
    static constexpr std::size_t maxQueued = 64;
    // A longer answer fails with EMSGSIZE: a dump that does not end. The scan results of a crowded place are a tenth.
    static constexpr std::size_t maxAnswerBytes = 4 << 20;

    explicit NetlinkRequests(int protocol, std::size_t answerLimit = maxAnswerBytes);
    ~NetlinkRequests() = default;

    void send(NetlinkMessage message, Completion completion);

private:
    struct Request {
        NetlinkMessage message;
        Completion completion;
        std::uint32_t sequence { 0 };
        NetlinkResult result;
        std::size_t answerBytes { 0 };
    };

    void open();
    void sendNext();
    void read();
    void receive(const NetlinkReply& reply);
    void close();
    void finish(int error);

    int m_protocol;
    std::size_t m_answerLimit;
    std::unique_ptr<NetlinkSocket> m_socket;
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::deque<Request> m_queue; // the first one was sent if its sequence is not 0
    QTimer m_timeout;
};
