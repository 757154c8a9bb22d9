#pragma once

#include "platform/store/PropertyList.h"
#include "platform/store/SaveResult.h"

#include <QString>

#include <optional>

// The settings file is an array. Its first element is a dictionary of texts with the settings; all other elements are
// ignored and preserved.

// Returns an empty array if the file is missing or does not contain an array.
[[nodiscard]] PropertyArray readSettingsFile(const QString& path);

// Writes the file atomically. Keeps a backup of the old file if its first element could not be read completely.
[[nodiscard]] SaveResult writeSettingsFile(const QString& path, const PropertyArray& records);

// Returns std::nullopt for an empty array and an empty dictionary if the first element is not a dictionary.
[[nodiscard]] std::optional<PropertyDictionary> firstRecord(const PropertyArray& records);
// Adds an element if the array is empty.
void setFirstRecord(PropertyArray& records, const PropertyDictionary& record);
