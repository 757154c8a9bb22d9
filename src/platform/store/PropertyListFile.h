#pragma once

#include "platform/store/PropertyList.h"
#include "platform/store/SaveResult.h"

#include <QDir>
#include <QString>

#include <functional>
#include <optional>

class AtomicFile;

// Property lists in files. Texts that were read or written are overwritten in memory when they are no longer needed, as
// far as Qt's XML streams leave that to us.

// A file of the user's settings, in "Library/Preferences" of the home directory.
[[nodiscard]] QString preferencesFile(const QString& name, const QString& home = QDir::homePath());

// The application's own file in the user's configuration directory; the suffix follows the application's identifier.
[[nodiscard]] QString configurationFile(const QString& suffix);

// std::nullopt for a file that is missing, unreadable, not a regular file or not a property list.
[[nodiscard]] std::optional<PropertyValue> readPropertyListFile(const QString& path);

// Commits an open file with this content, which is overwritten in memory afterwards.
[[nodiscard]] SaveResult commitPropertyList(AtomicFile& file, const PropertyValue& root);

// Replaces the file, as AtomicFile does, with what change() makes of its present content, which is std::nullopt as for
// readPropertyListFile. Other programs wait meanwhile. A file that is not a property list, or whose root isFullyRead rejects, is
// backed up first (backUpUnreadableFile): someone may have edited it by hand. On failure the file is unchanged.
[[nodiscard]] SaveResult changePropertyListFile(const QString& path, bool (*isFullyRead)(const PropertyValue&),
    const std::function<PropertyValue(const std::optional<PropertyValue>&)>& change);
[[nodiscard]] SaveResult replacePropertyListFile(
    const QString& path, const PropertyValue& root, bool (*isFullyRead)(const PropertyValue&));

// The usual form of a settings file: a list of dictionaries of texts, read by dictionariesOf. An empty list where the
// file is missing or unreadable.
[[nodiscard]] PropertyDictionaries readDictionariesFile(const QString& path);

// Like replacePropertyListFile; a file counts as fully read if dictionariesOf skips nothing in it.
[[nodiscard]] SaveResult writeDictionariesFile(const QString& path, const PropertyDictionaries& dictionaries);
