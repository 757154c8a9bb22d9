#pragma once

#include <algorithm>
#include <optional>
#include <string_view>

#include <sys/socket.h>
#include <sys/un.h>

// The address of a Unix domain socket; std::nullopt if the path does not fit.
[[nodiscard]] inline std::optional<sockaddr_un> socketAddress(std::string_view path)
{
    sockaddr_un address {};
    if (path.size() >= sizeof(address.sun_path)) // leaves room for the terminating zero
        return std::nullopt;
    address.sun_family = AF_UNIX;
    std::copy(path.begin(), path.end(), address.sun_path);
    return address;
}

// The address in the form that system calls take.
[[nodiscard]] inline const sockaddr* generic(const sockaddr_un& address)
{
    return reinterpret_cast<const sockaddr*>(&address);
}
