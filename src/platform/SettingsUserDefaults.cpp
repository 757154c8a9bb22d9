#include "platform/SettingsUserDefaults.h"

#include "app/shared/Identity.h"
#include "platform/AtomicFile.h"
#include "platform/PropertyText.h"

#include <QFileInfo>
#include <QLatin1String>

namespace {

constexpr int longestArray = 100000; // a size beyond this one is damage
const auto sizeKey = QLatin1String("size");

QString domainPath()
{
    return QSettings(QSettings::IniFormat, QSettings::UserScope, QLatin1String(Identity::organisationName),
        QLatin1String(Identity::applicationId))
        .fileName();
}

// A slash would end a group's name, and a name cannot be empty.
QString settingsKey(const QString& key)
{
    if (key.isEmpty())
        return QChar(escapeUnit);
    QString result = carriableText(key);
    for (const char16_t separator : { u'/', u'\\' })
        result.replace(QChar(separator), escapedUnit(separator));
    return result;
}

QString keyOfSettings(const QString& settingsKey)
{
    return settingsKey == QChar(escapeUnit) ? QString() : textOfCarriable(settingsKey);
}

PropertyDictionary readDictionary(QSettings& settings)
{
    PropertyDictionary dictionary;
    const auto keys = settings.allKeys();
    for (const QString& key : keys)
        dictionary.set(keyOfSettings(key), textOfCarriable(settings.value(key).toString()));
    return dictionary;
}

void writeDictionary(QSettings& settings, const PropertyDictionary& dictionary)
{
    for (const auto& [key, text] : dictionary)
        settings.setValue(settingsKey(key), carriableText(text));
}

} // namespace

SettingsUserDefaults::SettingsUserDefaults()
    : SettingsUserDefaults(domainPath())
{
}

SettingsUserDefaults::SettingsUserDefaults(const QString& path)
    : m_settings(path, QSettings::IniFormat)
    , m_damaged(m_settings.status() == QSettings::FormatError)
{
}

std::optional<PropertyDictionaries> SettingsUserDefaults::arrayForKey(const QString& key) const
{
    if (m_damaged)
        return std::nullopt;
    m_settings.beginGroup(settingsKey(key));
    bool valid = false;
    const int size = m_settings.value(sizeKey).toString().toInt(&valid);
    std::optional<PropertyDictionaries> array;
    if (valid && size >= 0 && size <= longestArray)
        array.emplace();
    for (int i = 1; array && i <= size; ++i) {
        m_settings.beginGroup(QString::number(i));
        array->push_back(readDictionary(m_settings));
        m_settings.endGroup();
    }
    m_settings.endGroup();
    return array;
}

void SettingsUserDefaults::setArray(const QString& key, const PropertyDictionaries& array)
{
    if (!replaceDamaged())
        return;
    removeObjectForKey(key);
    m_settings.beginWriteArray(settingsKey(key), static_cast<int>(array.size()));
    for (std::size_t i = 0; i < array.size(); ++i) {
        m_settings.setArrayIndex(static_cast<int>(i));
        writeDictionary(m_settings, array[i]);
    }
    m_settings.endArray();
}

void SettingsUserDefaults::removeObjectForKey(const QString& key)
{
    if (replaceDamaged())
        m_settings.remove(settingsKey(key));
}

// The settings keep the access rights of a file that they replace, so there has to be one that is private.
void SettingsUserDefaults::synchronize()
{
    if (m_damaged || !makePrivateFile(path()))
        return;
    m_settings.sync();
    syncFolder(QFileInfo(path()).absolutePath());
}

// False when the damaged file cannot be kept: then it is left as it is.
bool SettingsUserDefaults::replaceDamaged()
{
    if (!m_damaged)
        return true;
    if (!keepUnreadableFile(path()))
        return false;
    m_settings.clear();
    m_damaged = false;
    return true;
}
