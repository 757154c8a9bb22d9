#pragma once

#include <QtGlobal>

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

// A driver service on a real socket and a thread of its own, which misbehaves as scripted. It shares no code with the
// product: it implements docs/driver-protocol.md independently.
class SocketServiceDouble {
    Q_DISABLE_COPY_MOVE(SocketServiceDouble)

public:
    struct Request {
        std::uint32_t kind; // 0 open, 1 structure call, 2 scalar call
        std::uint32_t selector;
        std::uint32_t inputSize; // from the header
        std::uint32_t replyCapacity;
        std::vector<std::byte> input; // as received
        bool operator==(const Request&) const = default;
    };

    // The reaction to one request: packets to send, in order, then whether to close the connection. If empty, the
    // client never gets a reply.
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

    // Answers every request with success and no output unless scripted. The directory must exist.
    explicit SocketServiceDouble(std::string path);
    ~SocketServiceDouble();

    void onOpen(Script script);
    void onStructureCall(Script script);
    void onScalarCall(Script script);

    // Listens at the path, replacing a leftover socket; false on failure.
    [[nodiscard]] bool start(int backlog = 16);
    // Closes every connection. Leaves the socket file unless removeSocket is set.
    void die(bool removeSocket = false);
    // Keeps listening but no longer accepts connections, like a service that hangs.
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
    std::mutex m_acceptMutex; // held while a connection is accepted
    std::map<std::uint32_t, Script> m_scripts; // by kind
    std::vector<Request> m_requests;

    int m_listener { -1 };
    int m_wakeUp { -1 };
    std::vector<int> m_connections; // used only by the thread, like the delayed reactions
    std::vector<Delayed> m_delayed;
    std::atomic<int> m_accepted { 0 };
    std::atomic<bool> m_accepting { false };
    std::atomic<bool> m_ending { false };
    std::thread m_thread;
};
