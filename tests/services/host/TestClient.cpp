#include "tests/services/host/TestClient.h"

#include <QCoreApplication>
#include <QDeadlineTimer>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

namespace {

constexpr int timeoutMs = 5'000;
constexpr std::size_t maxPacketBytes = 200'000;

FileDescriptor connectTo(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    const FileDescriptor directory(::open(path.substr(0, slash).c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    FileDescriptor socket(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    sockaddr_un address {};
    address.sun_family = AF_UNIX;
    const std::string reachable = "/proc/self/fd/" + std::to_string(directory.get()) + path.substr(slash);
    if (reachable.size() >= sizeof(address.sun_path))
        return {};
    std::memcpy(address.sun_path, reachable.c_str(), reachable.size() + 1);
    if (::connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0)
        return {};
    return socket;
}

} // namespace

Bytes bytesOf(std::initializer_list<unsigned> octets)
{
    Bytes bytes;
    for (const unsigned octet : octets)
        bytes.push_back(static_cast<std::byte>(octet));
    return bytes;
}

Bytes bytesOf(const std::string& text)
{
    Bytes bytes(text.size());
    std::memcpy(bytes.data(), text.data(), text.size());
    return bytes;
}

Bytes requestPacket(std::uint32_t kind, std::uint32_t selector, std::uint32_t inputSize, std::uint32_t replyCapacity,
    const Bytes& input)
{
    const std::uint32_t words[] { kind, selector, inputSize, replyCapacity };
    Bytes packet(sizeof(words));
    std::memcpy(packet.data(), words, sizeof(words));
    packet.insert(packet.end(), input.begin(), input.end());
    return packet;
}

Bytes openPacket()
{
    return requestPacket(0, 0, 0, 0);
}

Bytes callPacket(std::uint32_t selector, const Bytes& input, std::uint32_t replyCapacity)
{
    return requestPacket(1, selector, static_cast<std::uint32_t>(input.size()), replyCapacity, input);
}

Bytes completionPacket()
{
    return requestPacket(2, 1, 0, 0);
}

bool pumpUntil(const std::function<bool()>& condition)
{
    const QDeadlineTimer deadline(timeoutMs);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents);
    }
    return true;
}

void pump()
{
    constexpr int rounds = 20; // accepting, reading and closing take one round each
    for (int i = 0; i < rounds; ++i)
        QCoreApplication::processEvents(QEventLoop::AllEvents);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

TestClient::TestClient(const std::string& path)
    : m_socket(connectTo(path))
{
}

bool TestClient::send(const Bytes& packet)
{
    return ::send(m_socket.get(), packet.data(), packet.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(packet.size());
}

bool TestClient::isReadable() const
{
    pollfd waiting { m_socket.get(), POLLIN, 0 };
    return ::poll(&waiting, 1, 0) == 1;
}

std::optional<Bytes> TestClient::receive()
{
    if (!pumpUntil([this] { return isReadable(); }))
        return std::nullopt;
    Bytes packet(maxPacketBytes);
    const ssize_t size = ::recv(m_socket.get(), packet.data(), packet.size(), 0);
    if (size <= 0)
        return std::nullopt;
    packet.resize(static_cast<std::size_t>(size));
    return packet;
}

std::optional<TestReply> TestClient::receiveReply()
{
    const auto packet = receive();
    TestReply reply;
    if (!packet || packet->size() < 8)
        return std::nullopt;
    std::memcpy(&reply.result, packet->data(), 4);
    std::memcpy(&reply.outputSize, packet->data() + 4, 4);
    reply.output.assign(packet->begin() + 8, packet->end());
    return reply;
}

std::optional<TestReply> TestClient::request(const Bytes& packet)
{
    return send(packet) ? receiveReply() : std::nullopt;
}

bool TestClient::open()
{
    const auto reply = request(openPacket());
    return reply && reply->result == 0 && reply->outputSize == 0 && reply->output.empty();
}

bool TestClient::isHungUpOn()
{
    if (!pumpUntil([this] { return isReadable(); }))
        return false;
    std::byte one {};
    const ssize_t size = ::recv(m_socket.get(), &one, 1, MSG_PEEK);
    return size == 0 || (size < 0 && errno == ECONNRESET);
}
