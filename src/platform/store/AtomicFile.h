#pragma once

#include "platform/store/SaveResult.h"
#include "posix/FileDescriptor.h"

#include <QByteArray>
#include <QString>

#include <chrono>

// Files that hold keys in plain text. Only their user can read them (mode 0600, directories 0700), and the old content
// stays until the new one is complete on disk.

inline constexpr unsigned privateFileMode = 0600;

// One save of a file. The content goes into a temporary file in the same directory, which then replaces the file. A
// symbolic link keeps pointing to the file. Until this object has committed or is destroyed, other programs wait, so the
// caller may read and change the file in between.
//
// Not a QSaveFile: that creates its file with mode 0666, ignores a failed sync to disk, and a process killed just
// before the rename leaves the keys under a random name, which later saves cannot recognise as theirs. Here the
// name is fixed (".being-written" is appended), and a leftover is removed by the next save. The lock on it (flock) ends
// with its process.
class AtomicFile {
    Q_DISABLE_COPY_MOVE(AtomicFile)

public:
    // How long a save waits for another program's save; that program may be suspended.
    static constexpr std::chrono::milliseconds defaultLockTimeout { 2000 };

    explicit AtomicFile(const QString& path);
    ~AtomicFile(); // without a commit, the file is unchanged and no temporary file remains

    // Creates missing directories and the temporary file. Fails with timed_out while another program is saving.
    [[nodiscard]] SaveResult open(std::chrono::milliseconds lockTimeout = defaultLockTimeout);
    // Replaces the file. Call it once, after open() has succeeded.
    [[nodiscard]] SaveResult commit(const QByteArray& content);

private:
    QString m_target;
    QByteArray m_temporaryName;
    FileDescriptor m_temporary; // locked; open until the file is committed
};

// Opens and commits in one step.
[[nodiscard]] SaveResult writeFileAtomically(const QString& path, const QByteArray& content);

// The file that a symbolic link points to; any other path unchanged.
[[nodiscard]] QString linkTarget(const QString& path);

// Creates a directory and its missing parents. Succeeds where it already exists.
[[nodiscard]] SaveResult makePrivateDirectories(const QString& path);

// Makes renames and new names in a directory survive a power loss. Best effort: not every file system supports it.
void syncDirectory(const QString& path);
