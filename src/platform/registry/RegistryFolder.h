#pragma once

#include "posix/FileDescriptor.h"

#include <string>
#include <vector>

// The folder ROOT/CLASS of the I/O registry, in which every listening socket is a service.

enum class FolderVerdict {
    Trusted,
    Missing,
    NotReadable, // not a folder (nor is a symbolic link one), or not open to us
    ForeignOwner, // neither root's nor the user's
    WritableByOthers, // by its group or by everybody
};

struct RegistryFolder {
    FileDescriptor descriptor; // none unless trusted
    FolderVerdict verdict { FolderVerdict::Missing };
};

[[nodiscard]] RegistryFolder openRegistryFolder(const std::string& path);

// Instance names of the services that accept a connection, in byte order. A service with no room for another
// connection is alive, too; anything else that does not accept one is no service. Takes the folder's descriptor.
[[nodiscard]] std::vector<std::string> liveServices(FileDescriptor folder);

// The file of one instance, as a path-only descriptor: what is connected to through it is this very file, however
// long its path and whatever becomes of its name. None when there is no such file.
[[nodiscard]] FileDescriptor openInstance(int folder, const char* name);

// connect(2) with a socket of ours; waits as the socket's settings say. 0 or the errno.
[[nodiscard]] int connectToInstance(const FileDescriptor& socket, const FileDescriptor& instance);

// An unconnected socket for a user client, which does not wait.
[[nodiscard]] FileDescriptor makeClientSocket();
