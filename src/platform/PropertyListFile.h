#pragma once

#include "platform/PropertyList.h"

#include <QDir>
#include <QString>

#include <optional>

// Property lists in files.

// Where a user's settings lie: "Library/Preferences" in the home folder.
[[nodiscard]] QString preferencesFile(const QString& name, const QString& home = QDir::homePath());

// Nothing for a file that is missing, is no regular file, cannot be read or is no property list.
[[nodiscard]] std::optional<PropertyValue> readPropertyListFile(const QString& path);

// A file of settings: a list of dictionaries of texts, as dictionariesOf takes them. An empty list where it is missing
// or unreadable.
[[nodiscard]] PropertyDictionaries readDictionariesFile(const QString& path);

// Replaces the file as writeFileAtomically does. A file that is there and cannot be read as such a list, or not without
// leaving something out, is kept first (keepUnreadableFile): somebody may have typed it. False, with the file as it was,
// when either fails.
[[nodiscard]] bool writeDictionariesFile(const QString& path, const PropertyDictionaries& dictionaries);
