#include "services/simulator/control/ControlSocket.h"

#include <QStandardPaths>

#include <cerrno>
#include <cstring>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

constexpr int answerTimeoutSeconds = 10;

bool fillAddress(sockaddr_un& address, const std::string& path)
{
    if (path.empty() || path.size() >= sizeof(address.sun_path)) {
        errno = ENAMETOOLONG;
        return false;
    }
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    return true;
}

int closedWithErrno(int descriptor)
{
    const int reason = errno;
    (void)::close(descriptor);
    errno = reason;
    return -1;
}

template <typename Operation> int onNewSocket(const std::string& path, Operation operation)
{
    sockaddr_un address {};
    if (!fillAddress(address, path))
        return -1;
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (descriptor < 0)
        return -1;
    // The interface of sockets takes every address by its common head.
    if (operation(descriptor, reinterpret_cast<const sockaddr*>(&address), socklen_t { sizeof(address) }) != 0)
        return closedWithErrno(descriptor);
    return descriptor;
}

int bindPrivately(int descriptor, const sockaddr* address, socklen_t size)
{
    const mode_t before = ::umask(0177);
    const int result = ::bind(descriptor, address, size);
    ::umask(before);
    return result;
}

bool sendAll(int descriptor, const QByteArray& bytes)
{
    qsizetype sent = 0;
    while (sent < bytes.size()) {
        const ssize_t count
            = ::send(descriptor, bytes.constData() + sent, static_cast<std::size_t>(bytes.size() - sent), MSG_NOSIGNAL);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        sent += count;
    }
    return true;
}

std::optional<QByteArray> receiveLine(int descriptor)
{
    QByteArray line;
    char buffer[4096];
    while (!line.endsWith('\n') && static_cast<std::size_t>(line.size()) < controlLineBytes) {
        const ssize_t count = ::recv(descriptor, buffer, sizeof(buffer), 0);
        if (count < 0 && errno == EINTR)
            continue;
        if (count == 0)
            errno = ECONNRESET;
        if (count <= 0)
            return std::nullopt;
        line.append(buffer, count);
    }
    return line;
}

} // namespace

std::string defaultControlPath(const std::string& instance)
{
    const QString runtime = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    return runtime.toStdString() + "/pellvane-sim/" + instance + ".control";
}

bool makePrivateFolder(const std::string& socketPath)
{
    const std::string folder = socketPath.substr(0, socketPath.rfind('/'));
    if (folder.empty() || folder == socketPath)
        return true;
    if (::mkdir(folder.c_str(), 0700) == 0)
        return true;
    struct stat status { };
    if (errno != EEXIST || ::stat(folder.c_str(), &status) != 0)
        return false;
    if (!S_ISDIR(status.st_mode) || status.st_uid != ::geteuid() || (status.st_mode & 077) != 0) {
        errno = EACCES;
        return false;
    }
    return true;
}

int connectControl(const std::string& socketPath)
{
    return onNewSocket(socketPath, ::connect);
}

int listenControl(const std::string& socketPath)
{
    const int other = connectControl(socketPath);
    if (other >= 0) {
        (void)::close(other);
        errno = EADDRINUSE;
        return -1;
    }
    if (errno == ECONNREFUSED)
        (void)::unlink(socketPath.c_str());
    const int descriptor = onNewSocket(socketPath, bindPrivately);
    if (descriptor >= 0 && ::listen(descriptor, SOMAXCONN) != 0)
        return closedWithErrno(descriptor);
    return descriptor;
}

std::optional<QByteArray> callControl(const std::string& socketPath, const QByteArray& line, std::string& error)
{
    const int descriptor = connectControl(socketPath);
    if (descriptor < 0) {
        error = "no simulator answers at " + socketPath + " (" + std::strerror(errno) + ')';
        return std::nullopt;
    }
    const timeval timeout { answerTimeoutSeconds, 0 };
    (void)::setsockopt(descriptor, SOL_SOCKET, SO_RCVTIMEO, &timeout, sizeof(timeout));
    std::optional<QByteArray> answer;
    if (sendAll(descriptor, line))
        answer = receiveLine(descriptor);
    if (!answer)
        error = std::string("the simulator gave no answer (") + std::strerror(errno) + ')';
    (void)::close(descriptor);
    return answer;
}
