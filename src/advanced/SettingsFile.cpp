#include "advanced/SettingsFile.h"

#include "platform/AtomicFile.h"
#include "platform/PropertyListFile.h"

namespace {

std::optional<PropertyArray> settingsAt(const QString& path)
{
    const auto root = readPropertyListFile(path);
    const PropertyArray* const records = root ? root->array() : nullptr;
    if (records == nullptr || (!records->empty() && !firstRecord(*records)))
        return std::nullopt;
    return *records;
}

} // namespace

PropertyArray readSettingsFile(const QString& path)
{
    return settingsAt(path).value_or(PropertyArray());
}

bool writeSettingsFile(const QString& path, const PropertyArray& records)
{
    if (!settingsAt(path) && !keepUnreadableFile(path))
        return false;
    return writeFileAtomically(path, writePropertyList({ records }));
}

std::optional<PropertyDictionary> firstRecord(const PropertyArray& records)
{
    if (records.empty())
        return std::nullopt;
    const auto first = dictionariesOf({ PropertyArray { records.front() } });
    return first ? std::optional(first->front()) : std::nullopt;
}

void putFirstRecord(PropertyArray& records, const PropertyDictionary& record)
{
    if (records.empty())
        records.emplace_back();
    records.front() = propertyValueOf(PropertyDictionaries { record }).array()->front();
}
