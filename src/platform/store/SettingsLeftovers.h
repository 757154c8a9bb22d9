#pragma once

#include <QFileDevice>
#include <QString>

// What QSettings leaves beside its file when the process ends while it saves: its lock, and the temporary file that was
// to replace the settings.

// Removes a lock that no living process holds. Were its number not yet written into it, the settings would wait for
// half a minute.
void removeAbandonedLock(const QString& settingsPath);

// To be called when the temporary file is open and empty. It has a random name, which a person's file could have as
// well; a second name, the settings' own with ".being-written" added, lets it be told later.
void markTemporaryFile(const QFileDevice& temporaryFile);

// Removes the file that is marked and those that were never filled. False, and nothing is done, while another process
// saves.
[[nodiscard]] bool removeTemporaryFiles(const QString& settingsPath);
