#pragma once

#include "posix/FileDescriptor.h"

#include <optional>
#include <string>
#include <system_error>

#include <sys/types.h>

// Who may enter the directories that are created, and who may connect.
struct ServiceAccess {
    mode_t directoryMode { 0700 };
    std::optional<mode_t> socketMode {}; // std::nullopt: as the process's umask says
    std::optional<gid_t> socketGroup {}; // std::nullopt: the group of the process
};

// A non-blocking listening AF_UNIX socket with a name in a directory. Destroying it removes the name, unless another
// service has taken the name in the meantime.
class ListeningSocket {
public:
    // Publishes a SOCK_SEQPACKET socket as ROOT/CLASS/INSTANCE, creating missing directories. Fails with
    // operation_not_permitted for a class directory that someone else owns or that group or others may write to, and
    // like listen() below.
    [[nodiscard]] static std::optional<ListeningSocket> publish(const std::string& root, const std::string& className,
        const std::string& instanceName, std::error_code& error, const ServiceAccess& access = {});

    // Listens under a name in an open directory, with a socket of this type (SOCK_STREAM or SOCK_SEQPACKET), and
    // replaces a socket left behind by a dead process. Fails with
    //   invalid_argument for a name that is not a file name,
    //   filename_too_long for a name that does not fit a socket address,
    //   address_in_use if a live service has the name,
    //   file_exists if something other than a socket has it.
    [[nodiscard]] static std::optional<ListeningSocket> listen(FileDescriptor directory, const std::string& name,
        int type, std::error_code& error, const ServiceAccess& access = {});

    ~ListeningSocket();
    ListeningSocket(ListeningSocket&&) noexcept = default;
    ListeningSocket& operator=(ListeningSocket&&) = delete;
    ListeningSocket(const ListeningSocket&) = delete;
    ListeningSocket& operator=(const ListeningSocket&) = delete;

    [[nodiscard]] int descriptor() const { return m_socket.get(); }
    // Never blocks: fails with resource_unavailable_try_again if no client is waiting.
    [[nodiscard]] FileDescriptor accept(std::error_code& error) const;

private:
    ListeningSocket(FileDescriptor directory, FileDescriptor socket, std::string name, dev_t device, ino_t inode);

    FileDescriptor m_directory;
    FileDescriptor m_socket;
    std::string m_name;
    dev_t m_device;
    ino_t m_inode;
};
