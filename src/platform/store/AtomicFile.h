#pragma once

#include <QByteArray>
#include <QString>

// Files that hold keys in plain text: nobody but their user reads them (mode 0600, folders 0700), and what was there
// stays until what replaces it is whole on the disk.

// Replaces the file at path, or makes it; folders that are missing are made. The content is written to a second file
// beside it, which is private from the moment it exists and takes the file's name once it is on the disk (fsync); a
// symbolic link keeps pointing to the file. False on failure: the file is as it was, and nothing is left beside it.
// The second file has ".being-written" added to the name: one that a program left behind when it ended is removed by
// the next call. Of programs that write the same file at once one succeeds; the others fail and wait for nobody.
[[nodiscard]] bool writeFileAtomically(const QString& path, const QByteArray& content);

// Where a symbolic link points to; the path itself otherwise.
[[nodiscard]] QString linkTarget(const QString& path);

// Makes a folder and those above it that are missing. True when it is there afterwards.
[[nodiscard]] bool makePrivateFolders(const QString& path);

// Makes an empty file where there is none, and takes other people's access to one that is there.
[[nodiscard]] bool makePrivateFile(const QString& path);

// Makes changes of names in a folder last through a loss of power. Where the file system cannot, nothing is lost but
// this.
void syncFolder(const QString& path);

// Keeps the file at path, as it is now, under the name that has ".unreadable" added, and ".unreadable.2" and so on
// where another content has taken that. The file also stays where it is. True when its content is kept, also by an
// earlier call; and where there is nothing to keep: no file, or an empty one.
[[nodiscard]] bool keepUnreadableFile(const QString& path);
