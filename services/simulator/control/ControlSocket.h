#pragma once

#include <QByteArray>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

// Where simulator and simctl meet: a stream socket in a folder that only its owner enters.

// A request or an answer is one line of JSON, at most this long.
inline constexpr std::size_t controlLineBytes = std::size_t { 1 } << 20;

// The control socket of an instance: pellvane-sim/INSTANCE.control in the user's runtime directory.
[[nodiscard]] std::string defaultControlPath(const std::string& instance);

// Makes the folder of a socket, 0700, where it is missing. False, with errno set, when it cannot be made, is somebody
// else's, or lets group or others in.
[[nodiscard]] bool makePrivateFolder(const std::string& socketPath);

// Sends one line and waits for the line that answers it. Nothing on failure, with the reason in error.
[[nodiscard]] std::optional<QByteArray> callControl(
    const std::string& socketPath, const QByteArray& line, std::string& error);

// A connected or listening descriptor; -1, with errno set, on failure. A path too long for a socket is ENAMETOOLONG.
// A listening one takes the place of a socket that nobody listens on; with a live one errno is EADDRINUSE.
[[nodiscard]] int connectControl(const std::string& socketPath);
[[nodiscard]] int listenControl(const std::string& socketPath);
