#include "advanced/SettingsFile.h"

#include "platform/AtomicFile.h"
#include "platform/PropertyListFile.h"

namespace {

std::optional<PropertyArray> arrayAt(const QString& path)
{
    const auto root = readPropertyListFile(path);
    const PropertyArray* const records = root ? root->array() : nullptr;
    return records != nullptr ? std::optional(*records) : std::nullopt;
}

// The first element alone, as a list that holds it; an empty list where there is none.
PropertyValue firstAlone(const PropertyArray& records)
{
    return { PropertyArray(records.begin(), records.begin() + (records.empty() ? 0 : 1)) };
}

bool isReadAsAWhole(const QString& path)
{
    const auto records = arrayAt(path);
    return records && areDictionariesOfTexts(firstAlone(*records));
}

} // namespace

PropertyArray readSettingsFile(const QString& path)
{
    return arrayAt(path).value_or(PropertyArray());
}

bool writeSettingsFile(const QString& path, const PropertyArray& records)
{
    if (!isReadAsAWhole(path) && !keepUnreadableFile(path))
        return false;
    return writeFileAtomically(path, writePropertyList({ records }));
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
