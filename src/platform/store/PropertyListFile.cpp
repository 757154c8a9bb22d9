#include "platform/store/PropertyListFile.h"

#include "platform/store/AtomicFile.h"

#include <QFile>
#include <QFileInfo>

QString preferencesFile(const QString& name, const QString& home)
{
    return home + QStringLiteral("/Library/Preferences/") + name;
}

std::optional<PropertyValue> readPropertyListFile(const QString& path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || file.size() > maxPropertyListSize || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray bytes = file.read(maxPropertyListSize + 1); // it may have grown
    return file.error() == QFileDevice::NoError ? readPropertyList(bytes) : std::nullopt;
}

bool replacePropertyListFile(
    const QString& path, const PropertyValue& root, bool (*isReadAsAWhole)(const PropertyValue&))
{
    const auto before = readPropertyListFile(path);
    if (!(before && isReadAsAWhole(*before)) && !keepUnreadableFile(path))
        return false;
    return writeFileAtomically(path, writePropertyList(root));
}

PropertyDictionaries readDictionariesFile(const QString& path)
{
    const auto root = readPropertyListFile(path);
    return root ? dictionariesOf(*root).value_or(PropertyDictionaries()) : PropertyDictionaries();
}

bool writeDictionariesFile(const QString& path, const PropertyDictionaries& dictionaries)
{
    return replacePropertyListFile(path, propertyValueOf(dictionaries), areDictionariesOfTexts);
}
