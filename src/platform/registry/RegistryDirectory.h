#pragma once

#include "posix/FileDescriptor.h"

#include <string>
#include <system_error>
#include <vector>

// The directory ROOT/CLASS of the I/O registry, where every listening socket is a service.

enum class DirectoryTrust {
    Trusted,
    Missing,
    NotReadable, // not a directory (symbolic links are not followed), or no permission
    ForeignOwner, // owned neither by root nor by the user
    WritableByOthers, // by group or others
};

struct RegistryDirectory {
    FileDescriptor descriptor; // empty unless trusted
    DirectoryTrust trust { DirectoryTrust::Missing };
};

[[nodiscard]] RegistryDirectory openRegistryDirectory(const std::string& path);

// Instance names of the services that accept a connection, in byte order. Includes services whose connection queue is
// full. Anything else that refuses a connection is skipped.
[[nodiscard]] std::vector<std::string> liveServices(FileDescriptor directory);

// Opens the socket file of an instance (O_PATH). A connection through the descriptor reaches exactly this file, even if
// its path is too long for a socket address or the file is renamed. Empty if there is no such file.
[[nodiscard]] FileDescriptor openInstance(int directory, const char* name);

// connect(2); blocks only if the socket does.
[[nodiscard]] std::error_code connectToInstance(const FileDescriptor& socket, const FileDescriptor& instance);

// An unconnected, non-blocking socket for a user client.
[[nodiscard]] FileDescriptor makeClientSocket();
