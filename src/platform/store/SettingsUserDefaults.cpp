#include "platform/store/SettingsUserDefaults.h"

#include "app/shared/Identity.h"
#include "platform/store/AtomicFile.h"
#include "platform/store/PropertyListFile.h"
#include "platform/store/SettingsLeftovers.h"

#include <QFileDevice>
#include <QFileInfo>
#include <QLatin1String>

#include <algorithm>

#include <sys/stat.h>
#include <unistd.h>

namespace {

// The file is a dictionary of the arrays; what is none is left out. An empty one is a file that was made and not yet
// filled.
bool readArrays(QIODevice& device, QSettings::SettingsMap& arrays)
{
    const QByteArray bytes = device.read(propertyListSizeLimit + 1);
    if (bytes.isEmpty())
        return device.atEnd();
    const auto root = readPropertyList(bytes);
    if (!root || !root->tree())
        return false;
    QSettings::SettingsMap read;
    for (const PropertyEntry& entry : *root->tree()) {
        if (auto array = dictionariesOf(entry.value))
            read.insert(entry.key, QVariant::fromValue(*std::move(array)));
    }
    arrays = read;
    return true;
}

// Puts the content on the disk before the settings give the file its name, which they would do even where the disk
// has no room for what they still hold back.
bool writeArrays(QIODevice& device, const QSettings::SettingsMap& arrays)
{
    PropertyTree tree;
    for (auto array = arrays.begin(); array != arrays.end(); ++array)
        tree.push_back({ array.key(), propertyValueOf(array.value().value<PropertyDictionaries>()) });
    const QByteArray bytes = writePropertyList({ std::move(tree) });
    auto* file = qobject_cast<QFileDevice*>(&device);
    if (!file)
        return false;
    markTemporaryFile(*file);
    return file->write(bytes) == bytes.size() && file->flush() && ::fsync(file->handle()) == 0;
}

QSettings::Format propertyListFormat()
{
    static const auto format
        = QSettings::registerFormat(QStringLiteral("plist"), readArrays, writeArrays, Qt::CaseSensitive);
    return format;
}

QString domainPath()
{
    return QSettings(propertyListFormat(), QSettings::UserScope, QLatin1String(Identity::organisationName),
        QLatin1String(Identity::applicationId))
        .fileName();
}

// Whether the settings hold all that is in the file.
bool isReadAsAWhole(const QString& settingsPath)
{
    const auto root = readPropertyListFile(settingsPath);
    const PropertyTree* tree = root ? root->tree() : nullptr;
    return tree && std::all_of(tree->begin(), tree->end(), [](const PropertyEntry& entry) {
        return areDictionariesOfTexts(entry.value);
    });
}

// What is made in between is private from the moment that it exists.
class PrivateFilesOnly {
public:
    PrivateFilesOnly()
        : m_before(::umask(S_IRWXG | S_IRWXO))
    {
    }
    ~PrivateFilesOnly() { (void)::umask(m_before); }
    PrivateFilesOnly(const PrivateFilesOnly&) = delete;
    PrivateFilesOnly& operator=(const PrivateFilesOnly&) = delete;

private:
    mode_t m_before;
};

} // namespace

SettingsUserDefaults::SettingsUserDefaults()
    : SettingsUserDefaults(domainPath())
{
}

SettingsUserDefaults::SettingsUserDefaults(const QString& path)
    : m_settings(path, propertyListFormat())
{
}

std::optional<PropertyDictionaries> SettingsUserDefaults::arrayForKey(const QString& key) const
{
    const auto unsaved = m_unsaved.find(key);
    return unsaved != m_unsaved.end() ? unsaved->second : savedArray(key);
}

void SettingsUserDefaults::setArray(const QString& key, const PropertyDictionaries& array)
{
    m_unsaved[key] = array;
}

void SettingsUserDefaults::removeObjectForKey(const QString& key)
{
    m_unsaved[key] = std::nullopt;
}

// The settings keep the access rights of a file that they replace, so there has to be one that is private. They wait
// without an end for another process that saves, and write whatever they were given at any time: so they are given
// nothing before all is well.
void SettingsUserDefaults::synchronize()
{
    const bool isWhole = isReadAsAWhole(path());
    if ((!isWhole && !keepUnreadableFile(path())) || !makePrivateFile(path()))
        return;
    const PrivateFilesOnly privateFilesOnly;
    removeAbandonedLock(path());
    if (!removeTemporaryFiles(path()))
        return;
    if (!isWhole)
        saveAllAgain();
    for (const auto& [key, array] : m_unsaved)
        array ? m_settings.setValue(key, QVariant::fromValue(*array)) : m_settings.remove(key);
    m_unsaved.clear();
    m_settings.sync();
    (void)removeTemporaryFiles(path());
    syncFolder(QFileInfo(path()).absolutePath());
}

std::optional<PropertyDictionaries> SettingsUserDefaults::savedArray(const QString& key) const
{
    const QVariant array = m_settings.value(key);
    return array.canConvert<PropertyDictionaries>() ? std::optional(array.value<PropertyDictionaries>()) : std::nullopt;
}

// A file that was damaged since it was read gives back nothing of what it held.
void SettingsUserDefaults::saveAllAgain()
{
    for (const QString& key : m_settings.allKeys())
        m_unsaved.try_emplace(key, savedArray(key));
}
