#include "platform/store/WindowSettings.h"

#include "platform/store/PropertyListFile.h"

namespace {

PropertyDictionary firstDictionary(const QString& path)
{
    const PropertyDictionaries dictionaries = readDictionariesFile(path);
    return dictionaries.empty() ? PropertyDictionary() : dictionaries.front();
}

} // namespace

WindowSettings::WindowSettings()
    : WindowSettings(configurationFile(QStringLiteral(".window.plist")))
{
}

WindowSettings::WindowSettings(const QString& path)
    : m_path(path)
    , m_texts(firstDictionary(path))
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
    PropertyDictionary texts = firstDictionary(m_path);
    for (const auto& [key, text] : m_changes)
        texts.set(key, text);
    SaveResult saved = writeDictionariesFile(m_path, { texts });
    if (saved)
        m_changes = {};
    return saved;
}
