#pragma once

#include "platform/store/UserDefaults.h"

#include <functional>
#include <map>

// User defaults in memory; counts the calls of synchronize.
class MemoryUserDefaults final : public UserDefaults {
public:
    [[nodiscard]] std::optional<PropertyDictionaries> arrayForKey(const QString& key) const override
    {
        const auto array = arrays.find(key);
        return array == arrays.end() ? std::nullopt : std::optional(array->second);
    }
    [[nodiscard]] std::optional<PropertyDictionaries> savedArrayForKey(const QString& key) const override
    {
        return arrayForKey(key);
    }
    void setArray(const QString& key, const PropertyDictionaries& array) override
    {
        arrays[key] = array;
        if (onChange)
            onChange();
    }
    void removeObjectForKey(const QString& key) override
    {
        arrays.erase(key);
        if (onChange)
            onChange();
    }
    SaveResult synchronize() override
    {
        ++synchronizations;
        return {};
    }

    std::map<QString, PropertyDictionaries> arrays;
    int synchronizations { 0 };
    std::function<void()> onChange; // called after the change
};
