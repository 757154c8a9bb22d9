#include "app/SingleInstance.h"

#include "posix/FileTrust.h"
#include "posix/SocketAddress.h"

#include <QCryptographicHash>

#include <array>
#include <chrono>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using namespace std::chrono_literals;

constexpr int maxAttempts = 3;
constexpr auto attemptInterval = 100ms; // time for the other instance to listen, or to end
constexpr int answerLimitMs = 5000; // longer than a scan, which blocks the other instance
constexpr int requestLimitMs = 500;
constexpr qsizetype maxTokenLength = 4096;
constexpr char confirmation = '+';

bool isOwnDirectory(const std::string& directory)
{
    struct stat status { };
    return !directory.empty() && ::stat(directory.c_str(), &status) == 0 && S_ISDIR(status.st_mode)
        && isOwnedByUser(status) && !isWritableByOthers(status);
}

template <typename Call> bool withAddress(const std::string& path, Call call)
{
    const auto address = socketAddress(path);
    return address && call(generic(*address), sizeof(*address)) == 0;
}

bool isReadable(int descriptor, int limitMs)
{
    pollfd waiting { descriptor, POLLIN, 0 };
    return ::poll(&waiting, 1, limitMs) == 1;
}

// Up to the end of the stream or the first interruption.
QByteArray readToken(int connection)
{
    QByteArray token;
    std::array<char, 512> part {};
    while (token.size() <= maxTokenLength && isReadable(connection, requestLimitMs)) {
        const ssize_t size = ::recv(connection, part.data(), part.size(), 0);
        if (size <= 0)
            break;
        token.append(part.data(), size);
    }
    return token.size() <= maxTokenLength ? token : QByteArray();
}

} // namespace

SingleInstance::SingleInstance(const std::string& directory, const QByteArray& display)
    : m_isUsable(isOwnDirectory(directory))
{
    // A hash, because the name of a display may be long or contain slashes.
    const QByteArray scope = QCryptographicHash::hash(display, QCryptographicHash::Sha1).toHex().left(16);
    const std::string base = directory + "/vantrel-" + scope.toStdString();
    m_lockPath = base + ".lock";
    m_socketPath = base + ".socket";
}

bool SingleInstance::isFirst(const QByteArray& activationToken)
{
    if (!m_isUsable)
        return true;
    for (int attempt = 0; attempt < maxAttempts; ++attempt) {
        if (takeLock()) {
            listenForOthers();
            return true;
        }
        if (askFirst(activationToken))
            return false;
        std::this_thread::sleep_for(attemptInterval);
    }
    return true;
}

bool SingleInstance::takeLock()
{
    FileDescriptor lock(::open(m_lockPath.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR));
    if (!lock || ::flock(lock.get(), LOCK_EX | LOCK_NB) != 0)
        return false;
    m_lock = std::move(lock);
    return true;
}

// The lock is held, so a socket at this path was left by an instance that has ended.
void SingleInstance::listenForOthers()
{
    (void)::unlink(m_socketPath.c_str());
    FileDescriptor listener(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    const bool isBound = listener && withAddress(m_socketPath, [&](const sockaddr* address, socklen_t size) {
        return ::bind(listener.get(), address, size);
    });
    if (isBound && ::listen(listener.get(), SOMAXCONN) == 0)
        m_socket = std::move(listener);
}

bool SingleInstance::askFirst(const QByteArray& activationToken) const
{
    const FileDescriptor connection(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    const bool isConnected = connection && withAddress(m_socketPath, [&](const sockaddr* address, socklen_t size) {
        return ::connect(connection.get(), address, size);
    });
    if (!isConnected)
        return false;
    const QByteArray token = activationToken.size() <= maxTokenLength ? activationToken : QByteArray();
    if (::send(connection.get(), token.constData(), static_cast<std::size_t>(token.size()), MSG_NOSIGNAL)
        != token.size())
        return false;
    (void)::shutdown(connection.get(), SHUT_WR);
    char answer = 0;
    return isReadable(connection.get(), answerLimitMs) && ::recv(connection.get(), &answer, 1, 0) == 1
        && answer == confirmation;
}

ActivationListener::ActivationListener(const SingleInstance& instance, Callback callback)
    : m_socket(instance.socket())
    , m_callback(std::move(callback))
{
    if (m_socket == -1)
        return;
    m_notifier = std::make_unique<QSocketNotifier>(m_socket, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { acceptRequest(); });
}

void ActivationListener::acceptRequest()
{
    const FileDescriptor connection(::accept4(m_socket, nullptr, nullptr, SOCK_CLOEXEC));
    if (!connection)
        return;
    const QByteArray token = readToken(connection.get());
    (void)::send(connection.get(), &confirmation, 1, MSG_NOSIGNAL);
    m_callback(token);
}
