#include "platform/store/SettingsUserDefaults.h"

#include "platform/store/AtomicFile.h"
#include "platform/store/PropertyListFile.h"
#include "platform/store/UnreadableFile.h"

#include <algorithm>

namespace {

PropertyValue propertyValueOf(const std::map<QString, PropertyDictionaries>& arrays)
{
    PropertyTree tree;
    for (const auto& [key, array] : arrays)
        tree.push_back({ key, ::propertyValueOf(array) });
    return { std::move(tree) };
}

} // namespace

SettingsUserDefaults::SettingsUserDefaults()
    : SettingsUserDefaults(configurationFile(QStringLiteral(".plist")))
{
}

SettingsUserDefaults::SettingsUserDefaults(const QString& path)
    : m_path(path)
    , m_saved(readArrays(path).arrays)
{
}

std::optional<PropertyDictionaries> SettingsUserDefaults::arrayForKey(const QString& key) const
{
    if (const auto change = m_changes.find(key); change != m_changes.end())
        return change->second;
    return savedArrayForKey(key);
}

std::optional<PropertyDictionaries> SettingsUserDefaults::savedArrayForKey(const QString& key) const
{
    if (auto stored = readArrays(m_path); stored.isComplete)
        m_saved = std::move(stored.arrays);
    const auto saved = m_saved.find(key);
    return saved != m_saved.end() ? std::optional(saved->second) : std::nullopt;
}

void SettingsUserDefaults::setArray(const QString& key, const PropertyDictionaries& array)
{
    m_changes[key] = array;
}

void SettingsUserDefaults::removeObjectForKey(const QString& key)
{
    m_changes[key] = std::nullopt;
}

SaveResult SettingsUserDefaults::synchronize()
{
    if (m_changes.empty())
        return {};
    AtomicFile file(m_path);
    if (SaveResult opened = file.open(); !opened)
        return opened;
    auto [arrays, isComplete] = readArrays(m_path);
    if (!isComplete) {
        if (SaveResult backedUp = backUpUnreadableFile(m_path); !backedUp)
            return backedUp;
        // The file is missing or was damaged: this object may hold the only copy of what it read earlier.
        for (const auto& [key, array] : m_saved)
            arrays[key] = array;
    }
    applyChanges(arrays);
    if (SaveResult saved = commitPropertyList(file, propertyValueOf(arrays)); !saved)
        return saved;
    m_saved = std::move(arrays);
    m_changes.clear();
    return {};
}

void SettingsUserDefaults::applyChanges(Arrays& arrays) const
{
    for (const auto& [key, array] : m_changes) {
        if (array)
            arrays[key] = *array;
        else
            arrays.erase(key);
    }
}

SettingsUserDefaults::StoredArrays SettingsUserDefaults::readArrays(const QString& path)
{
    const auto root = readPropertyListFile(path);
    const PropertyTree* tree = root ? root->tree() : nullptr;
    if (!tree)
        return {};
    StoredArrays stored;
    for (const PropertyEntry& entry : *tree) {
        if (auto array = dictionariesOf(entry.value))
            stored.arrays.emplace(entry.key, *std::move(array));
    }
    stored.isComplete = std::all_of(
        tree->begin(), tree->end(), [](const PropertyEntry& entry) { return areDictionariesOfTexts(entry.value); });
    return stored;
}
