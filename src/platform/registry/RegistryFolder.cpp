#include "platform/registry/RegistryFolder.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <iterator>
#include <memory>
#include <string_view>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

namespace {

FolderVerdict verdictOn(const FileDescriptor& folder)
{
    struct stat status { };
    if (::fstat(folder.get(), &status) != 0)
        return FolderVerdict::NotReadable;
    if (status.st_uid != 0 && status.st_uid != ::geteuid())
        return FolderVerdict::ForeignOwner;
    if ((status.st_mode & (S_IWGRP | S_IWOTH)) != 0)
        return FolderVerdict::WritableByOthers;
    return FolderVerdict::Trusted;
}

bool mayBeSocket(const dirent& entry)
{
    return entry.d_type == DT_SOCK || entry.d_type == DT_UNKNOWN;
}

bool isAlive(int folder, const char* name)
{
    const FileDescriptor instance = openInstance(folder, name);
    const FileDescriptor socket = makeClientSocket();
    if (!instance || !socket)
        return false;
    const int error = connectToInstance(socket, instance);
    return error == 0 || error == EAGAIN;
}

struct CloseFolder {
    void operator()(DIR* folder) const { (void)::closedir(folder); }
};

} // namespace

RegistryFolder openRegistryFolder(const std::string& path)
{
    FileDescriptor folder(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!folder)
        return { FileDescriptor(), errno == ENOENT ? FolderVerdict::Missing : FolderVerdict::NotReadable };
    const FolderVerdict verdict = verdictOn(folder);
    return { verdict == FolderVerdict::Trusted ? std::move(folder) : FileDescriptor(), verdict };
}

std::vector<std::string> liveServices(FileDescriptor folder)
{
    std::vector<std::string> names;
    const std::unique_ptr<DIR, CloseFolder> listing(::fdopendir(folder.get()));
    if (listing == nullptr)
        return names;
    const int descriptor = folder.release(); // the listing closes it
    while (const dirent* const entry = ::readdir(listing.get())) {
        if (mayBeSocket(*entry) && isAlive(descriptor, entry->d_name))
            names.emplace_back(entry->d_name);
    }
    std::sort(names.begin(), names.end());
    return names;
}

FileDescriptor openInstance(int folder, const char* name)
{
    return FileDescriptor(::openat(folder, name, O_PATH | O_NOFOLLOW | O_CLOEXEC));
}

int connectToInstance(const FileDescriptor& socket, const FileDescriptor& instance)
{
    constexpr std::string_view openFiles = "/proc/self/fd/";
    sockaddr_un address {};
    address.sun_family = AF_UNIX;
    char* const number = std::copy(openFiles.begin(), openFiles.end(), std::begin(address.sun_path));
    (void)std::to_chars(number, std::end(address.sun_path) - 1, instance.get());
    const int result = ::connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof(address));
    return result == 0 ? 0 : errno;
}

FileDescriptor makeClientSocket()
{
    return FileDescriptor(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
}
