#include "platform/store/PropertyListFile.h"

#include "platform/store/AtomicFile.h"
#include "platform/store/UnreadableFile.h"

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
    const QByteArray bytes = file.read(maxPropertyListSize + 1); // it may have grown since
    return file.error() == QFileDevice::NoError ? readPropertyList(bytes) : std::nullopt;
}

SaveResult replacePropertyListFile(
    const QString& path, const PropertyValue& root, bool (*isFullyRead)(const PropertyValue&))
{
    AtomicFile file(path);
    if (SaveResult opened = file.open(); !opened)
        return opened;
    const auto before = readPropertyListFile(path);
    if (!before || !isFullyRead(*before)) {
        if (SaveResult backedUp = backUpUnreadableFile(path); !backedUp)
            return backedUp;
    }
    return file.commit(writePropertyList(root));
}

PropertyDictionaries readDictionariesFile(const QString& path)
{
    const auto root = readPropertyListFile(path);
    return root ? dictionariesOf(*root).value_or(PropertyDictionaries()) : PropertyDictionaries();
}

SaveResult writeDictionariesFile(const QString& path, const PropertyDictionaries& dictionaries)
{
    return replacePropertyListFile(path, propertyValueOf(dictionaries), areDictionariesOfTexts);
}
