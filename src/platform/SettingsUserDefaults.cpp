#include "platform/SettingsUserDefaults.h"

#include "app/shared/Identity.h"
#include "platform/AtomicFile.h"
#include "platform/FileDescriptor.h"
#include "platform/PropertyListFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLatin1String>
#include <QLockFile>

#include <algorithm>

#include <fcntl.h>
#include <sys/file.h>
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

QByteArray markName(const QString& settingsPath)
{
    return QFile::encodeName(linkTarget(settingsPath) + QStringLiteral(".being-written"));
}

// The file that is being written has a random name, which a person's file could have as well. A second, fixed one lets
// it be told when it was left behind.
void markSecondFile(const QFileDevice& file)
{
    const QByteArray name = markName(file.fileName());
    const QByteArray open = "/proc/self/fd/" + QByteArray::number(file.handle());
    (void)::unlink(name.constData());
    (void)::linkat(AT_FDCWD, open.constData(), AT_FDCWD, name.constData(), AT_SYMLINK_FOLLOW);
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
    markSecondFile(*file);
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

// A process that ended while it saved leaves the settings' lock behind, and if it had not yet written its number into
// it, they would wait for half a minute. One that lives holds the lock natively.
void removeAbandonedLock(const QString& settingsPath)
{
    const QByteArray name = QFile::encodeName(settingsPath + QStringLiteral(".lock"));
    const FileDescriptor lock(::open(name.constData(), O_RDWR | O_CLOEXEC));
    if (lock && ::flock(lock.get(), LOCK_EX | LOCK_NB) == 0)
        (void)::unlink(name.constData());
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

bool isRandomPart(QStringView text)
{
    constexpr qsizetype letters = 6; // of an alphabet of both cases
    const auto isLetter = [](QChar each) { return (each >= u'a' && each <= u'z') || (each >= u'A' && each <= u'Z'); };
    return text.size() == letters && std::all_of(text.begin(), text.end(), isLetter);
}

// Removes what a process left beside the settings that ended while it saved: the file with the mark, and one that is
// empty because its process ended even before that. Where another process is saving, nothing is left behind.
void removeLeftovers(const QString& settingsPath)
{
    QLockFile lock(settingsPath + QStringLiteral(".lock"));
    if (!lock.tryLock(0))
        return;
    const QByteArray mark = markName(settingsPath);
    struct stat marked { };
    const bool isMarked = ::lstat(mark.constData(), &marked) == 0;
    const QFileInfo settings(linkTarget(settingsPath));
    const QString start = settings.fileName() + u'.';
    for (const QString& name : settings.dir().entryList(QDir::Files | QDir::Hidden | QDir::NoSymLinks)) {
        if (!name.startsWith(start) || !isRandomPart(QStringView(name).sliced(start.size())))
            continue;
        const QByteArray path = QFile::encodeName(settings.dir().filePath(name));
        struct stat status { };
        if (::lstat(path.constData(), &status) == 0
            && (status.st_size == 0 || (isMarked && status.st_dev == marked.st_dev && status.st_ino == marked.st_ino)))
            (void)::unlink(path.constData());
    }
    (void)::unlink(mark.constData());
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
    const QVariant array = m_settings.value(key);
    return array.canConvert<PropertyDictionaries>() ? std::optional(array.value<PropertyDictionaries>()) : std::nullopt;
}

void SettingsUserDefaults::setArray(const QString& key, const PropertyDictionaries& array)
{
    if (keepDamaged())
        m_settings.setValue(key, QVariant::fromValue(array));
}

void SettingsUserDefaults::removeObjectForKey(const QString& key)
{
    if (keepDamaged())
        m_settings.remove(key);
}

// The settings keep the access rights of a file that they replace, so there has to be one that is private.
void SettingsUserDefaults::synchronize()
{
    if (!keepDamaged() || !makePrivateFile(path()))
        return;
    const PrivateFilesOnly privateFilesOnly;
    removeAbandonedLock(path());
    removeLeftovers(path());
    m_settings.sync();
    removeLeftovers(path());
    syncFolder(QFileInfo(path()).absolutePath());
}

// False when a file that would not be replaced by all it holds cannot be kept: then it is left as it is, and nothing is
// set that would replace it.
bool SettingsUserDefaults::keepDamaged() const
{
    return isReadAsAWhole(path()) || keepUnreadableFile(path());
}
