#pragma once

#include <QString>
#include <QTemporaryDir>

#include <memory>

// A new directory for the sockets of one supplicant, which only we can enter (mode 0700). In /run if we may write there,
// otherwise in the user's runtime directory. Its destruction removes it.
[[nodiscard]] std::unique_ptr<QTemporaryDir> makeSocketDirectory();

// Removes such directories in parent whose supplicant is dead: a service that was killed leaves them behind.
void removeStaleSocketDirectories(const QString& parent);
void removeStaleSocketDirectories();
