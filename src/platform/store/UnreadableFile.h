#pragma once

#include "platform/store/SaveResult.h"

// Backs up the file at path as "path.unreadable", or as "path.unreadable.2" and so on if that name holds other
// content. The file itself stays in place. Also succeeds if an earlier backup has the same content, or if there is
// nothing to back up: no file, or an empty one. Fails if maxBackups names are taken.
[[nodiscard]] SaveResult backUpUnreadableFile(const QString& path, int maxBackups = 1000);
