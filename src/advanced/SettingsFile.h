#pragma once

#include "platform/store/PropertyList.h"

#include <QString>

#include <optional>

// The settings file: an array whose first element holds the options, as a dictionary of texts, as dictionariesOf takes
// them. What stands behind that element is not looked at and stays as it is, whatever it is.

// Empty where the file is missing or is no array.
[[nodiscard]] PropertyArray readSettingsFile(const QString& path);

// As replacePropertyListFile does: read as a whole is an array whose first element holds nothing that cannot be read.
[[nodiscard]] bool writeSettingsFile(const QString& path, const PropertyArray& records);

// The options of such an array; nothing where it is empty, and none of them where its first element is no dictionary.
[[nodiscard]] std::optional<PropertyDictionary> firstRecord(const PropertyArray& records);
// Makes an element where there is none.
void putFirstRecord(PropertyArray& records, const PropertyDictionary& record);
