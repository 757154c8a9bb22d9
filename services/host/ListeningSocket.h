#pragma once

#include "posix/FileDescriptor.h"

#include <optional>
#include <string>

#include <sys/types.h>

// A listening socket with a name in a folder of the I/O registry. The name goes with it, unless another service has
// taken it meanwhile.
class ListeningSocket {
public:
    // Nothing, with errno set, when the folder cannot be made or is not to be trusted (EPERM), the name is no file name
    // (EINVAL) or too long for a socket address (ENAMETOOLONG), belongs to a live service (EADDRINUSE) or to something
    // that is no socket (EEXIST).
    [[nodiscard]] static std::optional<ListeningSocket> publish(
        const std::string& root, const std::string& className, const std::string& instanceName);

    ~ListeningSocket();
    ListeningSocket(ListeningSocket&&) noexcept = default;
    ListeningSocket& operator=(ListeningSocket&&) = delete;
    ListeningSocket(const ListeningSocket&) = delete;
    ListeningSocket& operator=(const ListeningSocket&) = delete;

    [[nodiscard]] int descriptor() const { return m_socket.get(); }
    // Not valid, with errno set, when nobody is waiting. Never blocks.
    [[nodiscard]] FileDescriptor accept() const;

private:
    ListeningSocket(FileDescriptor folder, FileDescriptor socket, std::string name, dev_t device, ino_t inode);

    FileDescriptor m_folder;
    FileDescriptor m_socket;
    std::string m_name;
    dev_t m_device;
    ino_t m_inode;
};
