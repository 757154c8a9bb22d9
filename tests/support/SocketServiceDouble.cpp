#include "tests/support/SocketServiceDouble.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

constexpr std::size_t requestHeaderSize = 16;
constexpr std::size_t replyHeaderSize = 8;
constexpr std::size_t maxRequestSize = requestHeaderSize + 65536;

std::optional<sockaddr_un> addressOf(const std::string& path)
{
    sockaddr_un address {};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof(address.sun_path))
        return std::nullopt;
    std::memcpy(address.sun_path, path.data(), path.size());
    return address;
}

} // namespace

std::vector<std::byte> SocketServiceDouble::packet(
    std::uint32_t result, std::uint32_t outputSize, const std::vector<std::byte>& output)
{
    std::vector<std::byte> bytes(replyHeaderSize + output.size());
    std::memcpy(bytes.data(), &result, sizeof(result));
    std::memcpy(bytes.data() + sizeof(result), &outputSize, sizeof(outputSize));
    std::copy(output.begin(), output.end(), bytes.data() + replyHeaderSize);
    return bytes;
}

SocketServiceDouble::Reaction SocketServiceDouble::answer(const std::vector<std::byte>& output)
{
    return sendRaw(packet(0, static_cast<std::uint32_t>(output.size()), output));
}

SocketServiceDouble::Reaction SocketServiceDouble::refuse(std::uint32_t result)
{
    return sendRaw(packet(result, 0));
}

SocketServiceDouble::Reaction SocketServiceDouble::sendRaw(std::vector<std::byte> packet)
{
    return { .packets = { std::move(packet) } };
}

SocketServiceDouble::Reaction SocketServiceDouble::silence()
{
    return {};
}

SocketServiceDouble::Reaction SocketServiceDouble::hangUpNow()
{
    return { .hangUp = true };
}

SocketServiceDouble::SocketServiceDouble(std::string path)
    : m_path(std::move(path))
{
}

SocketServiceDouble::~SocketServiceDouble()
{
    die(true);
}

void SocketServiceDouble::onOpen(Script script)
{
    const std::scoped_lock lock(m_mutex);
    m_scripts[0] = std::move(script);
}

void SocketServiceDouble::onStructureCall(Script script)
{
    const std::scoped_lock lock(m_mutex);
    m_scripts[1] = std::move(script);
}

void SocketServiceDouble::onScalarCall(Script script)
{
    const std::scoped_lock lock(m_mutex);
    m_scripts[2] = std::move(script);
}

bool SocketServiceDouble::start(int backlog)
{
    die();
    const auto address = addressOf(m_path);
    if (!address)
        return false;
    (void)::unlink(m_path.c_str());
    m_listener = ::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0);
    m_wakeUp = ::eventfd(0, EFD_CLOEXEC);
    if (::bind(m_listener, reinterpret_cast<const sockaddr*>(&*address), sizeof(*address)) != 0
        || ::listen(m_listener, backlog) != 0) {
        die();
        return false;
    }
    m_accepting = true;
    m_ending = false;
    m_thread = std::thread([this] { run(); });
    return true;
}

void SocketServiceDouble::die(bool removeSocket)
{
    if (m_thread.joinable()) {
        m_ending = true;
        wake();
        m_thread.join();
    }
    for (const int descriptor : { std::exchange(m_listener, -1), std::exchange(m_wakeUp, -1) }) {
        if (descriptor != -1)
            (void)::close(descriptor);
    }
    if (removeSocket)
        (void)::unlink(m_path.c_str());
}

void SocketServiceDouble::stopAccepting()
{
    {
        const std::scoped_lock lock(m_acceptMutex);
        m_accepting = false;
    }
    wake();
}

std::vector<SocketServiceDouble::Request> SocketServiceDouble::requests() const
{
    const std::scoped_lock lock(m_mutex);
    return m_requests;
}

void SocketServiceDouble::run()
{
    while (!m_ending) {
        const int waitMs = sendDueReactions();
        std::vector<pollfd> watched { { m_wakeUp, POLLIN, 0 } };
        for (const int connection : m_connections)
            watched.push_back({ connection, POLLIN, 0 });
        if (m_accepting)
            watched.push_back({ m_listener, POLLIN, 0 });
        if (::poll(watched.data(), watched.size(), waitMs) <= 0)
            continue;
        for (const pollfd& ready : watched) {
            if (ready.revents == 0)
                continue;
            if (ready.fd == m_wakeUp) {
                std::uint64_t count = 0;
                (void)!::read(m_wakeUp, &count, sizeof(count));
            } else if (ready.fd == m_listener) {
                acceptConnection();
            } else {
                receive(ready.fd);
            }
        }
    }
    while (!m_connections.empty())
        closeConnection(m_connections.back());
}

void SocketServiceDouble::acceptConnection()
{
    const std::scoped_lock lock(m_acceptMutex);
    if (!m_accepting)
        return;
    const int connection = ::accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC);
    if (connection == -1)
        return;
    m_connections.push_back(connection);
    ++m_accepted;
}

void SocketServiceDouble::receive(int connection)
{
    std::vector<std::byte> bytes(maxRequestSize);
    const ssize_t received = ::recv(connection, bytes.data(), bytes.size(), MSG_DONTWAIT);
    if (received < static_cast<ssize_t>(requestHeaderSize)) {
        closeConnection(connection);
        return;
    }
    bytes.resize(static_cast<std::size_t>(received));
    std::array<std::uint32_t, 4> header {};
    std::memcpy(header.data(), bytes.data(), requestHeaderSize);
    Request request { header[0], header[1], header[2], header[3],
        { bytes.begin() + static_cast<std::ptrdiff_t>(requestHeaderSize), bytes.end() } };
    Script script;
    {
        const std::scoped_lock lock(m_mutex);
        m_requests.push_back(request);
        if (const auto found = m_scripts.find(request.kind); found != m_scripts.end())
            script = found->second;
    }
    const Reaction reaction = script ? script(request) : answer();
    if (reaction.delay.count() == 0)
        react(connection, reaction);
    else
        m_delayed.push_back({ std::chrono::steady_clock::now() + reaction.delay, connection, reaction });
}

void SocketServiceDouble::react(int connection, const Reaction& reaction)
{
    for (const auto& packet : reaction.packets)
        (void)::send(connection, packet.data(), packet.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    if (reaction.hangUp)
        closeConnection(connection);
}

// Returns the milliseconds until the next reaction is due; -1 if there is none.
int SocketServiceDouble::sendDueReactions()
{
    const auto now = std::chrono::steady_clock::now();
    std::vector<Delayed> due;
    std::erase_if(m_delayed, [&](const Delayed& delayed) {
        if (delayed.when > now)
            return false;
        due.push_back(delayed);
        return true;
    });
    for (const Delayed& delayed : due)
        react(delayed.connection, delayed.reaction);
    int waitMs = -1;
    for (const Delayed& delayed : m_delayed) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(delayed.when - now).count();
        waitMs = waitMs == -1 ? static_cast<int>(left) : std::min(waitMs, static_cast<int>(left));
    }
    return waitMs;
}

void SocketServiceDouble::closeConnection(int connection)
{
    (void)::close(connection);
    std::erase(m_connections, connection);
    std::erase_if(m_delayed, [connection](const Delayed& delayed) { return delayed.connection == connection; });
}

void SocketServiceDouble::wake() const
{
    const std::uint64_t one = 1;
    if (m_wakeUp != -1)
        (void)!::write(m_wakeUp, &one, sizeof(one));
}
