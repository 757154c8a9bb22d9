#pragma once

#include <sys/stat.h>
#include <unistd.h>

// Whether other users may change a file or directory: anyone who may write to a directory could replace a socket in it.

[[nodiscard]] inline bool isOwnedByUser(const struct stat& status)
{
    return status.st_uid == ::geteuid();
}

[[nodiscard]] inline bool isOwnedByRootOrUser(const struct stat& status)
{
    return status.st_uid == 0 || isOwnedByUser(status);
}

// By group or others.
[[nodiscard]] inline bool isWritableByOthers(const struct stat& status)
{
    return (status.st_mode & (S_IWGRP | S_IWOTH)) != 0;
}
