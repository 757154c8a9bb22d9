#pragma once

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

// A driver service behind a real socket, on a thread of its own, that behaves as badly as a test asks. It shares
// no code with the product: its bytes are those of docs/driver-protocol.md, written a second time.
class SocketServiceDouble {
public:
    struct Request {
        std::uint32_t kind; // 0 open, 1 structure call, 2 scalar call
        std::uint32_t selector;
        std::uint32_t inputSize; // as the header says
        std::uint32_t replyCapacity;
        std::vector<std::byte> input; // as it arrived
        bool operator==(const Request&) const = default;
    };

    // What becomes of one request: packets to send, in order, and whether the connection ends behind them. Without
    // either the client waits in vain.
    struct Reaction {
        std::vector<std::vector<std::byte>> packets {};
        bool hangUp { false };
        std::chrono::milliseconds delay { 0 };
    };
    using Script = std::function<Reaction(const Request&)>; // called on the service's thread

    [[nodiscard]] static std::vector<std::byte> packet(
        std::uint32_t result, std::uint32_t outputSize, const std::vector<std::byte>& output = {});
    [[nodiscard]] static Reaction answer(const std::vector<std::byte>& output = {});
    [[nodiscard]] static Reaction refuse(std::uint32_t result = 1);
    [[nodiscard]] static Reaction sendRaw(std::vector<std::byte> packet);
    [[nodiscard]] static Reaction silence();
    [[nodiscard]] static Reaction hangUpNow();

    // Answers every request with success and no output until it is told otherwise. The folders are not made here.
    explicit SocketServiceDouble(std::string path);
    ~SocketServiceDouble();
    SocketServiceDouble(const SocketServiceDouble&) = delete;
    SocketServiceDouble& operator=(const SocketServiceDouble&) = delete;

    void onOpen(Script script);
    void onStructureCall(Script script);
    void onScalarCall(Script script);

    // Listens at the path, in the place of whatever socket was left there. False when that is impossible.
    [[nodiscard]] bool start(int backlog = 16);
    // Dies: every connection ends. The socket stays behind unless it is removed.
    void die(bool removeSocket = false);
    // Listens on but takes no connections from here on, as a service that hangs.
    void stopAccepting();

    [[nodiscard]] std::vector<Request> requests() const;
    [[nodiscard]] int acceptedConnections() const { return m_accepted; }
    [[nodiscard]] const std::string& path() const { return m_path; }

private:
    struct Delayed {
        std::chrono::steady_clock::time_point when;
        int connection;
        Reaction reaction;
    };

    void run();
    void acceptConnection();
    void receive(int connection);
    void react(int connection, const Reaction& reaction);
    [[nodiscard]] int sendDueReactions();
    void closeConnection(int connection);
    void wake() const;

    std::string m_path;
    mutable std::mutex m_mutex; // guards the scripts and the requests
    std::mutex m_acceptMutex; // held while a connection is taken
    std::map<std::uint32_t, Script> m_scripts; // by kind
    std::vector<Request> m_requests;

    int m_listener { -1 };
    int m_wakeUp { -1 };
    std::vector<int> m_connections; // the thread's own, as are the delayed reactions
    std::vector<Delayed> m_delayed;
    std::atomic<int> m_accepted { 0 };
    std::atomic<bool> m_accepting { false };
    std::atomic<bool> m_ending { false };
    std::thread m_thread;
};
