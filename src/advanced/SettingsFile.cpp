#include "advanced/SettingsFile.h"

#include "platform/store/PropertyListFile.h"

namespace {

// The first element alone, as a list that holds it; an empty list where there is none.
PropertyValue firstAlone(const PropertyArray& records)
{
    return { PropertyArray(records.begin(), records.begin() + (records.empty() ? 0 : 1)) };
}

bool isFirstReadAsAWhole(const PropertyValue& root)
{
    return root.array() != nullptr && areDictionariesOfTexts(firstAlone(*root.array()));
}

} // namespace

PropertyArray readSettingsFile(const QString& path)
{
    const auto root = readPropertyListFile(path);
    const PropertyArray* const records = root ? root->array() : nullptr;
    return records != nullptr ? *records : PropertyArray();
}

bool writeSettingsFile(const QString& path, const PropertyArray& records)
{
    return replacePropertyListFile(path, { records }, isFirstReadAsAWhole);
}

std::optional<PropertyDictionary> firstRecord(const PropertyArray& records)
{
    if (records.empty())
        return std::nullopt;
    const auto first = dictionariesOf(firstAlone(records));
    return first ? first->front() : PropertyDictionary();
}

void putFirstRecord(PropertyArray& records, const PropertyDictionary& record)
{
    if (records.empty())
        records.emplace_back();
    records.front() = propertyValueOf(PropertyDictionaries { record }).array()->front();
}
