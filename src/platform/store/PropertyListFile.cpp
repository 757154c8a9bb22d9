#include "platform/store/PropertyListFile.h"

#include "app/shared/Identity.h"
#include "platform/store/AtomicFile.h"
#include "platform/store/UnreadableFile.h"

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

QString preferencesFile(const QString& name, const QString& home)
{
    return home + QStringLiteral("/Library/Preferences/") + name;
}

QString configurationFile(const QString& suffix)
{
    return QStringLiteral("%1/%2/%3%4")
        .arg(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation),
            QLatin1String(Identity::organisationName), QLatin1String(Identity::applicationId), suffix);
}

std::optional<PropertyValue> readPropertyListFile(const QString& path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || file.size() > maxPropertyListSize
        || !file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) // a buffer would keep the keys
        return std::nullopt;
    QByteArray bytes = file.read(maxPropertyListSize + 1); // it may have grown since
    auto root = file.error() == QFileDevice::NoError ? readPropertyList(bytes) : std::nullopt;
    overwriteUnlessShared(bytes);
    return root;
}

SaveResult commitPropertyList(AtomicFile& file, const PropertyValue& root)
{
    QByteArray bytes = writePropertyList(root);
    SaveResult saved = file.commit(bytes);
    overwriteUnlessShared(bytes);
    return saved;
}

SaveResult changePropertyListFile(const QString& path, bool (*isFullyRead)(const PropertyValue&),
    const std::function<PropertyValue(const std::optional<PropertyValue>&)>& change)
{
    AtomicFile file(path);
    if (SaveResult opened = file.open(); !opened)
        return opened;
    const auto before = readPropertyListFile(path);
    if (!before || !isFullyRead(*before)) {
        if (SaveResult backedUp = backUpUnreadableFile(path); !backedUp)
            return backedUp;
    }
    return commitPropertyList(file, change(before));
}

SaveResult replacePropertyListFile(
    const QString& path, const PropertyValue& root, bool (*isFullyRead)(const PropertyValue&))
{
    return changePropertyListFile(path, isFullyRead, [&root](const auto&) { return root; });
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
