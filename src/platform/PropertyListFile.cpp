#include "platform/PropertyListFile.h"

#include "platform/AtomicFile.h"

#include <QFile>
#include <QFileInfo>

namespace {

bool isReadAsAWhole(const QString& path)
{
    const auto root = readPropertyListFile(path);
    return root && areDictionariesOfTexts(*root);
}

} // namespace

QString preferencesFile(const QString& name, const QString& home)
{
    return home + QStringLiteral("/Library/Preferences/") + name;
}

std::optional<PropertyValue> readPropertyListFile(const QString& path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || file.size() > propertyListSizeLimit || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray bytes = file.read(propertyListSizeLimit + 1); // it may have grown
    return file.error() == QFileDevice::NoError ? readPropertyList(bytes) : std::nullopt;
}

PropertyDictionaries readDictionariesFile(const QString& path)
{
    const auto root = readPropertyListFile(path);
    return root ? dictionariesOf(*root).value_or(PropertyDictionaries()) : PropertyDictionaries();
}

bool writeDictionariesFile(const QString& path, const PropertyDictionaries& dictionaries)
{
    if (!isReadAsAWhole(path) && !keepUnreadableFile(path))
        return false;
    return writeFileAtomically(path, writePropertyList(propertyValueOf(dictionaries)));
}
