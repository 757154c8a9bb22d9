#pragma once

#include "platform/store/PropertyDictionary.h"
#include "platform/store/SaveResult.h"

#include <QString>

#include <optional>

// The user's settings in the application's own domain: lists of dictionaries of texts, by key.
class UserDefaults {
public:
    virtual ~UserDefaults() = default;

    // std::nullopt for a key without a list; the list may be empty.
    [[nodiscard]] virtual std::optional<PropertyDictionaries> arrayForKey(const QString& key) const = 0;

    // The list as saved on disk, without changes not yet written.
    [[nodiscard]] virtual std::optional<PropertyDictionaries> savedArrayForKey(const QString& key) const = 0;

    virtual void setArray(const QString& key, const PropertyDictionaries& array) = 0;
    virtual void removeObjectForKey(const QString& key) = 0;

    // Writes the changes to disk. After a failure this object keeps them, and the next call tries again.
    virtual SaveResult synchronize() = 0;
};
