#include "services/host/ListeningSocket.h"

#include <cerrno>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

namespace {

bool isFileName(const std::string& name)
{
    return !name.empty() && name != "." && name != ".."
        && name.find_first_of(std::string("/\0", 2)) == std::string::npos;
}

bool makeFolder(int parent, const std::string& path)
{
    return ::mkdirat(parent, path.c_str(), 0700) == 0 || errno == EEXIST;
}

// Whoever may write to the folder could put a socket of his own in the place of ours.
bool isTrusted(int folder)
{
    struct stat status { };
    if (::fstat(folder, &status) != 0)
        return false;
    const bool isOwned = status.st_uid == 0 || status.st_uid == ::geteuid();
    if (isOwned && (status.st_mode & (S_IWGRP | S_IWOTH)) == 0)
        return true;
    errno = EPERM;
    return false;
}

FileDescriptor openClassFolder(const std::string& root, const std::string& className)
{
    if (!makeFolder(AT_FDCWD, root))
        return {};
    const FileDescriptor rootFolder(::open(root.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!rootFolder || !makeFolder(rootFolder.get(), className))
        return {};
    FileDescriptor folder(
        ::openat(rootFolder.get(), className.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!folder || !isTrusted(folder.get()))
        return {};
    return folder;
}

// Socket addresses hold 107 bytes, paths of a registry may be longer: the folder is named by its descriptor.
bool makeAddress(int folder, const std::string& name, sockaddr_un& address)
{
    const std::string path = "/proc/self/fd/" + std::to_string(folder) + '/' + name;
    if (path.size() >= sizeof(address.sun_path)) {
        errno = ENAMETOOLONG;
        return false;
    }
    address = {};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    return true;
}

FileDescriptor makeSocket()
{
    return FileDescriptor(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
}

const sockaddr* generic(const sockaddr_un& address)
{
    return reinterpret_cast<const sockaddr*>(&address);
}

// True when the name is free afterwards. Only a socket that refuses connections is swept away.
bool sweepStaleSocket(int folder, const std::string& name, const sockaddr_un& address)
{
    struct stat status { };
    if (::fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0)
        return errno == ENOENT;
    if (!S_ISSOCK(status.st_mode)) {
        errno = EEXIST;
        return false;
    }
    const FileDescriptor probe = makeSocket();
    if (!probe)
        return false;
    if (::connect(probe.get(), generic(address), sizeof(address)) == 0 || errno != ECONNREFUSED) {
        errno = EADDRINUSE;
        return false;
    }
    return ::unlinkat(folder, name.c_str(), 0) == 0;
}

bool bindAndListen(int folder, const std::string& name, int socket)
{
    sockaddr_un address {};
    if (!makeAddress(folder, name, address) || !sweepStaleSocket(folder, name, address))
        return false;
    return ::bind(socket, generic(address), sizeof(address)) == 0 && ::listen(socket, SOMAXCONN) == 0;
}

// Between the look at a stale socket and its removal no other service may come up under the name.
class FolderLock {
public:
    explicit FolderLock(int folder)
        : m_folder(folder)
    {
        while (::flock(m_folder, LOCK_EX) != 0 && errno == EINTR) { }
    }
    ~FolderLock()
    {
        const int error = errno;
        ::flock(m_folder, LOCK_UN);
        errno = error;
    }
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

private:
    int m_folder;
};

} // namespace

std::optional<ListeningSocket> ListeningSocket::publish(
    const std::string& root, const std::string& className, const std::string& instanceName)
{
    if (!isFileName(className) || !isFileName(instanceName)) {
        errno = EINVAL;
        return std::nullopt;
    }
    FileDescriptor folder = openClassFolder(root, className);
    if (!folder)
        return std::nullopt;
    FileDescriptor socket = makeSocket();
    if (!socket)
        return std::nullopt;
    const FolderLock lock(folder.get());
    if (!bindAndListen(folder.get(), instanceName, socket.get()))
        return std::nullopt;
    struct stat status { };
    if (::fstatat(folder.get(), instanceName.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0)
        return std::nullopt;
    return ListeningSocket(std::move(folder), std::move(socket), instanceName, status.st_dev, status.st_ino);
}

ListeningSocket::ListeningSocket(
    FileDescriptor folder, FileDescriptor socket, std::string name, dev_t device, ino_t inode)
    : m_folder(std::move(folder))
    , m_socket(std::move(socket))
    , m_name(std::move(name))
    , m_device(device)
    , m_inode(inode)
{
}

// The inode cannot be given to another file while the socket is bound to it, so the comparison is certain.
ListeningSocket::~ListeningSocket()
{
    if (!m_socket)
        return;
    const FolderLock lock(m_folder.get());
    struct stat status { };
    if (::fstatat(m_folder.get(), m_name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0 && status.st_dev == m_device
        && status.st_ino == m_inode)
        ::unlinkat(m_folder.get(), m_name.c_str(), 0);
}

FileDescriptor ListeningSocket::accept() const
{
    return FileDescriptor(::accept4(m_socket.get(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
}
