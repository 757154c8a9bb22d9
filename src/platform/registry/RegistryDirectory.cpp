#include "platform/registry/RegistryDirectory.h"

#include "posix/FileTrust.h"
#include "posix/SocketAddress.h"
#include "posix/SystemError.h"

#include <algorithm>
#include <cerrno>
#include <memory>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>

namespace {

DirectoryTrust trustIn(const FileDescriptor& directory)
{
    struct stat status { };
    if (::fstat(directory.get(), &status) != 0)
        return DirectoryTrust::NotReadable;
    if (!isOwnedByRootOrUser(status))
        return DirectoryTrust::ForeignOwner;
    if (isWritableByOthers(status))
        return DirectoryTrust::WritableByOthers;
    return DirectoryTrust::Trusted;
}

bool mayBeSocket(const dirent& entry)
{
    return entry.d_type == DT_SOCK || entry.d_type == DT_UNKNOWN;
}

bool isAlive(int directory, const char* name)
{
    const FileDescriptor instance = openInstance(directory, name);
    const FileDescriptor socket = makeClientSocket();
    if (!instance || !socket)
        return false;
    const std::error_code error = connectToInstance(socket, instance);
    return !error || error == std::errc::resource_unavailable_try_again;
}

struct CloseDirectory {
    void operator()(DIR* directory) const { (void)::closedir(directory); }
};

} // namespace

RegistryDirectory openRegistryDirectory(const std::string& path)
{
    FileDescriptor directory(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!directory)
        return { FileDescriptor(), errno == ENOENT ? DirectoryTrust::Missing : DirectoryTrust::NotReadable };
    const DirectoryTrust trust = trustIn(directory);
    return { trust == DirectoryTrust::Trusted ? std::move(directory) : FileDescriptor(), trust };
}

std::vector<std::string> liveServices(FileDescriptor directory)
{
    std::vector<std::string> names;
    const std::unique_ptr<DIR, CloseDirectory> listing(::fdopendir(directory.get()));
    if (listing == nullptr)
        return names;
    const int descriptor = directory.release(); // closed by the listing
    while (const dirent* const entry = ::readdir(listing.get())) {
        if (mayBeSocket(*entry) && isAlive(descriptor, entry->d_name))
            names.emplace_back(entry->d_name);
    }
    std::sort(names.begin(), names.end());
    return names;
}

FileDescriptor openInstance(int directory, const char* name)
{
    return FileDescriptor(::openat(directory, name, O_PATH | O_NOFOLLOW | O_CLOEXEC));
}

std::error_code connectToInstance(const FileDescriptor& socket, const FileDescriptor& instance)
{
    const auto address = socketAddress("/proc/self/fd/" + std::to_string(instance.get()));
    if (!address)
        return std::make_error_code(std::errc::filename_too_long);
    if (::connect(socket.get(), generic(*address), sizeof(*address)) != 0)
        return lastSystemError();
    return {};
}

FileDescriptor makeClientSocket()
{
    return FileDescriptor(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
}
