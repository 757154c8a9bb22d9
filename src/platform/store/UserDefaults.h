#pragma once

#include "platform/store/PropertyDictionary.h"

#include <QString>

#include <optional>

// The user's settings in the application's own domain: lists of dictionaries of texts under names.
class UserDefaults {
public:
    virtual ~UserDefaults() = default;

    // Nothing where there is no list under this name. A list may be empty.
    [[nodiscard]] virtual std::optional<PropertyDictionaries> arrayForKey(const QString& key) const = 0;

    virtual void setArray(const QString& key, const PropertyDictionaries& array) = 0;
    virtual void removeObjectForKey(const QString& key) = 0;

    // Puts what was changed on the disk. Where that fails, the changes still hold for this object.
    virtual void synchronize() = 0;
};
