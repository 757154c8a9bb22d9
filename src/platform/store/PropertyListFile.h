#pragma once

#include "platform/store/PropertyList.h"

#include <QDir>
#include <QString>

#include <optional>

// Property lists in files.

// Where a user's settings lie: "Library/Preferences" in the home folder.
[[nodiscard]] QString preferencesFile(const QString& name, const QString& home = QDir::homePath());

// Nothing for a file that is missing, is no regular file, cannot be read or is no property list.
[[nodiscard]] std::optional<PropertyValue> readPropertyListFile(const QString& path);

// Replaces the file as writeFileAtomically does. A file that is there and is no property list, or one whose root is not
// read as a whole, is kept first (keepUnreadableFile): somebody may have typed it. False, with the file as it was, when
// either fails.
[[nodiscard]] bool replacePropertyListFile(
    const QString& path, const PropertyValue& root, bool (*isReadAsAWhole)(const PropertyValue&));

// A file of settings: a list of dictionaries of texts, as dictionariesOf takes them. An empty list where it is missing
// or unreadable.
[[nodiscard]] PropertyDictionaries readDictionariesFile(const QString& path);

// As replacePropertyListFile does: read as a whole is a file in which dictionariesOf leaves nothing out.
[[nodiscard]] bool writeDictionariesFile(const QString& path, const PropertyDictionaries& dictionaries);
