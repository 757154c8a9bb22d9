#include "advanced/SettingsFile.h"

#include "platform/store/PropertyListFile.h"

namespace {

// An array with only the first element; empty if there is none.
PropertyValue firstElementOnly(const PropertyArray& records)
{
    return { PropertyArray(records.begin(), records.begin() + (records.empty() ? 0 : 1)) };
}

bool isFirstElementReadable(const PropertyValue& root)
{
    return root.array() != nullptr && areDictionariesOfTexts(firstElementOnly(*root.array()));
}

} // namespace

PropertyArray readSettingsFile(const QString& path)
{
    const auto root = readPropertyListFile(path);
    const PropertyArray* const records = root ? root->array() : nullptr;
    return records != nullptr ? *records : PropertyArray();
}

SaveResult writeSettingsFile(const QString& path, const PropertyArray& records)
{
    return replacePropertyListFile(path, { records }, isFirstElementReadable);
}

std::optional<PropertyDictionary> firstRecord(const PropertyArray& records)
{
    if (records.empty())
        return std::nullopt;
    const auto first = dictionariesOf(firstElementOnly(records));
    return first ? first->front() : PropertyDictionary();
}

void setFirstRecord(PropertyArray& records, const PropertyDictionary& record)
{
    if (records.empty())
        records.emplace_back();
    records.front() = propertyValueOf(PropertyDictionaries { record }).array()->front();
}
