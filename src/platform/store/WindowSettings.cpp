#include "platform/store/WindowSettings.h"

#include "platform/store/PropertyListFile.h"

namespace {

std::optional<PropertyDictionary> firstDictionary(const std::optional<PropertyValue>& root)
{
    const auto dictionaries = root ? dictionariesOf(*root) : std::nullopt;
    return dictionaries && !dictionaries->empty() ? std::optional(dictionaries->front()) : std::nullopt;
}

} // namespace

WindowSettings::WindowSettings()
    : WindowSettings(configurationFile(QStringLiteral(".window.plist")))
{
}

WindowSettings::WindowSettings(const QString& path)
    : m_path(path)
    , m_texts(firstDictionary(readPropertyListFile(path)).value_or(PropertyDictionary()))
{
}

void WindowSettings::setText(const QString& key, const QString& text)
{
    if (m_texts.text(key) == text)
        return;
    m_texts.set(key, text);
    m_changes.set(key, text);
}

SaveResult WindowSettings::save()
{
    if (m_changes.isEmpty())
        return {};
    const auto applyChanges = [this](const std::optional<PropertyValue>& root) {
        // While the file is missing or damaged, this object may hold the only copy of what it read earlier.
        PropertyDictionary texts = firstDictionary(root).value_or(m_texts);
        for (const auto& [key, text] : m_changes)
            texts.set(key, text);
        return propertyValueOf({ texts });
    };
    SaveResult saved = changePropertyListFile(m_path, areDictionariesOfTexts, applyChanges);
    if (saved)
        m_changes = {};
    return saved;
}
