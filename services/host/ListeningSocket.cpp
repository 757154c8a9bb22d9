#include "services/host/ListeningSocket.h"

#include "posix/FileTrust.h"
#include "posix/SocketAddress.h"
#include "posix/SystemError.h"

#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>

namespace {

bool isFileName(const std::string& name)
{
    return !name.empty() && name != "." && name != ".."
        && name.find_first_of(std::string("/\0", 2)) == std::string::npos;
}

// Leaves the mode of an existing directory alone.
std::error_code makeDirectory(int parent, const std::string& path, mode_t mode)
{
    if (::mkdirat(parent, path.c_str(), 0700) != 0)
        return errno == EEXIST ? std::error_code() : lastSystemError();
    // The umask must not take away what the mode grants.
    return ::fchmodat(parent, path.c_str(), mode, 0) == 0 ? std::error_code() : lastSystemError();
}

std::error_code checkTrusted(int directory)
{
    struct stat status { };
    if (::fstat(directory, &status) != 0)
        return lastSystemError();
    if (!isOwnedByRootOrUser(status) || isWritableByOthers(status))
        return std::make_error_code(std::errc::operation_not_permitted);
    return {};
}

std::error_code openClassDirectory(
    const std::string& root, const std::string& className, mode_t mode, FileDescriptor& directory)
{
    if (const auto error = makeDirectory(AT_FDCWD, root, mode))
        return error;
    const FileDescriptor rootDirectory(::open(root.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!rootDirectory)
        return lastSystemError();
    if (const auto error = makeDirectory(rootDirectory.get(), className, mode))
        return error;
    directory = FileDescriptor(
        ::openat(rootDirectory.get(), className.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    return directory ? checkTrusted(directory.get()) : lastSystemError();
}

// Socket addresses hold at most 107 bytes, but registry paths may be longer: the address names the directory by its
// descriptor.
std::optional<sockaddr_un> addressIn(int directory, const std::string& name)
{
    return socketAddress("/proc/self/fd/" + std::to_string(directory) + '/' + name);
}

FileDescriptor makeSocket(int type)
{
    return FileDescriptor(::socket(AF_UNIX, type | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
}

// On success the name is free. Removes only a socket that refuses connections.
std::error_code removeStaleSocket(int directory, const std::string& name, int type, const sockaddr_un& address)
{
    struct stat status { };
    if (::fstatat(directory, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0)
        return errno == ENOENT ? std::error_code() : lastSystemError();
    if (!S_ISSOCK(status.st_mode))
        return std::make_error_code(std::errc::file_exists);
    const FileDescriptor probe = makeSocket(type);
    if (!probe)
        return lastSystemError();
    if (::connect(probe.get(), generic(address), sizeof(address)) == 0 || errno != ECONNREFUSED)
        return std::make_error_code(std::errc::address_in_use);
    return ::unlinkat(directory, name.c_str(), 0) == 0 ? std::error_code() : lastSystemError();
}

// Between bind() and listen(), when nobody can connect yet.
std::error_code grantAccess(int directory, const std::string& name, const ServiceAccess& access)
{
    constexpr uid_t sameOwner = static_cast<uid_t>(-1);
    if (access.socketGroup
        && ::fchownat(directory, name.c_str(), sameOwner, *access.socketGroup, AT_SYMLINK_NOFOLLOW) != 0)
        return lastSystemError();
    if (access.socketMode && ::fchmodat(directory, name.c_str(), *access.socketMode, 0) != 0)
        return lastSystemError();
    return {};
}

std::error_code bindAndListen(int directory, const std::string& name, int type, int socket, const ServiceAccess& access)
{
    const auto address = addressIn(directory, name);
    if (!address)
        return std::make_error_code(std::errc::filename_too_long);
    if (const auto error = removeStaleSocket(directory, name, type, *address))
        return error;
    if (::bind(socket, generic(*address), sizeof(*address)) != 0)
        return lastSystemError();
    std::error_code error = grantAccess(directory, name, access);
    if (!error && ::listen(socket, SOMAXCONN) != 0)
        error = lastSystemError();
    if (error)
        (void)::unlinkat(directory, name.c_str(), 0);
    return error;
}

// Held while a stale socket is examined and removed, so that no other service takes the name in between.
class DirectoryLock {
public:
    explicit DirectoryLock(int directory)
        : m_directory(directory)
    {
        while (::flock(m_directory, LOCK_EX) != 0 && errno == EINTR) { }
    }
    ~DirectoryLock() { ::flock(m_directory, LOCK_UN); }
    DirectoryLock(const DirectoryLock&) = delete;
    DirectoryLock& operator=(const DirectoryLock&) = delete;

private:
    int m_directory;
};

} // namespace

std::optional<ListeningSocket> ListeningSocket::publish(const std::string& root, const std::string& className,
    const std::string& instanceName, std::error_code& error, const ServiceAccess& access)
{
    error = std::make_error_code(std::errc::invalid_argument);
    if (!isFileName(className) || !isFileName(instanceName))
        return std::nullopt;
    FileDescriptor directory;
    error = openClassDirectory(root, className, access.directoryMode, directory);
    if (error)
        return std::nullopt;
    return listen(std::move(directory), instanceName, SOCK_SEQPACKET, error, access);
}

std::optional<ListeningSocket> ListeningSocket::listen(
    FileDescriptor directory, const std::string& name, int type, std::error_code& error, const ServiceAccess& access)
{
    error = isFileName(name) ? std::error_code() : std::make_error_code(std::errc::invalid_argument);
    if (error)
        return std::nullopt;
    FileDescriptor socket = makeSocket(type);
    if (!socket) {
        error = lastSystemError();
        return std::nullopt;
    }
    const DirectoryLock lock(directory.get());
    error = bindAndListen(directory.get(), name, type, socket.get(), access);
    if (error)
        return std::nullopt;
    struct stat status { };
    if (::fstatat(directory.get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
        error = lastSystemError();
        return std::nullopt;
    }
    return ListeningSocket(std::move(directory), std::move(socket), name, status.st_dev, status.st_ino);
}

ListeningSocket::ListeningSocket(
    FileDescriptor directory, FileDescriptor socket, std::string name, dev_t device, ino_t inode)
    : m_directory(std::move(directory))
    , m_socket(std::move(socket))
    , m_name(std::move(name))
    , m_device(device)
    , m_inode(inode)
{
}

// The inode cannot be reused while the socket is bound to it, so the comparison is reliable.
ListeningSocket::~ListeningSocket()
{
    if (!m_socket)
        return;
    const DirectoryLock lock(m_directory.get());
    struct stat status { };
    if (::fstatat(m_directory.get(), m_name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 && status.st_dev == m_device
        && status.st_ino == m_inode)
        ::unlinkat(m_directory.get(), m_name.c_str(), 0);
}

FileDescriptor ListeningSocket::accept(std::error_code& error) const
{
    FileDescriptor connection(::accept4(m_socket.get(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
    error = connection ? std::error_code() : lastSystemError();
    return connection;
}
