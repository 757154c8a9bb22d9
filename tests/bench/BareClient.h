#pragma once

#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <span>
#include <string>

#include <dirent.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

// A driver request made by the bare system calls.

constexpr std::array<std::uint32_t, 4> header(std::uint32_t kind, std::uint32_t selector, std::uint32_t size)
{
    return { kind, selector, size, size };
}

inline sockaddr_un addressOf(const std::string& path)
{
    sockaddr_un address {};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    return address;
}

inline int bareConnect(int folder, const char* name)
{
    const int instance = ::openat(folder, name, O_PATH | O_NOFOLLOW | O_CLOEXEC);
    const int client = ::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    sockaddr_un address {};
    address.sun_family = AF_UNIX;
    (void)std::snprintf(address.sun_path, sizeof(address.sun_path), "/proc/self/fd/%d", instance);
    if (::connect(client, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0)
        std::abort();
    (void)::close(instance);
    return client;
}

inline int bareFolder(const char* path)
{
    const int folder = ::open(path, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    struct stat status { };
    if (folder != -1)
        (void)::fstat(folder, &status);
    return folder;
}

inline void bareSearch(const char* missing, const char* present)
{
    if (bareFolder(missing) != -1)
        std::abort();
    const int folder = bareFolder(present);
    DIR* const listing = ::fdopendir(folder);
    while (const dirent* const entry = ::readdir(listing)) {
        if (entry->d_type == DT_SOCK)
            (void)::close(bareConnect(folder, entry->d_name));
    }
    (void)::closedir(listing);
}

// The size of the reply.
inline std::size_t bareRoundTrip(int client, const void* request, std::size_t size, std::span<std::byte> reply)
{
    iovec part { const_cast<void*>(request), size };
    msghdr message {};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    (void)::sendmsg(client, &message, MSG_NOSIGNAL | MSG_DONTWAIT);
    pollfd watched { client, POLLIN, 0 };
    (void)::poll(&watched, 1, 2000);
    const ssize_t received = ::recv(client, reply.data(), reply.size(), MSG_DONTWAIT | MSG_TRUNC);
    if (received < 8)
        std::abort();
    return static_cast<std::size_t>(received);
}

// Open, structure call, scalar call, close. Returns the size of the structure call's reply, which stays in reply.
inline std::size_t bareRequest(
    const char* classFolder, const char* instance, std::span<const std::byte> call, std::span<std::byte> reply)
{
    const int folder = bareFolder(classFolder);
    const int client = bareConnect(folder, instance);
    (void)::close(folder);
    std::array<std::byte, 16> small {};
    const auto open = header(0, 0, 0);
    (void)bareRoundTrip(client, open.data(), sizeof(open), small);
    const std::size_t size = bareRoundTrip(client, call.data(), call.size(), reply);
    const auto complete = header(2, 1, 0);
    (void)bareRoundTrip(client, complete.data(), sizeof(complete), small);
    (void)::close(client);
    return size;
}
