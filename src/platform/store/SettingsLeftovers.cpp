#include "platform/store/SettingsLeftovers.h"

#include "platform/store/AtomicFile.h"
#include "posix/FileDescriptor.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>

#include <algorithm>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

QString lockPath(const QString& settingsPath)
{
    return settingsPath + QStringLiteral(".lock");
}

QByteArray markName(const QString& settingsPath)
{
    return QFile::encodeName(linkTarget(settingsPath) + QStringLiteral(".being-written"));
}

bool isLetter(QChar character)
{
    return (character >= u'a' && character <= u'z') || (character >= u'A' && character <= u'Z');
}

// As the settings name the file that is to replace them.
bool isTemporaryName(QStringView name, const QString& settingsName)
{
    constexpr qsizetype letters = 6;
    return name.size() == settingsName.size() + 1 + letters && name.startsWith(settingsName + u'.')
        && std::all_of(name.end() - letters, name.end(), isLetter);
}

bool isSameFile(const struct stat& left, const struct stat& right)
{
    return left.st_dev == right.st_dev && left.st_ino == right.st_ino;
}

} // namespace

// A process that lives holds the lock natively.
void removeAbandonedLock(const QString& settingsPath)
{
    const QByteArray name = QFile::encodeName(lockPath(settingsPath));
    const FileDescriptor lock(::open(name.constData(), O_RDWR | O_CLOEXEC));
    if (lock && ::flock(lock.get(), LOCK_EX | LOCK_NB) == 0)
        (void)::unlink(name.constData());
}

void markTemporaryFile(const QFileDevice& temporaryFile)
{
    const QByteArray mark = markName(temporaryFile.fileName());
    const QByteArray open = "/proc/self/fd/" + QByteArray::number(temporaryFile.handle());
    (void)::unlink(mark.constData());
    (void)::linkat(AT_FDCWD, open.constData(), AT_FDCWD, mark.constData(), AT_SYMLINK_FOLLOW);
}

bool removeTemporaryFiles(const QString& settingsPath)
{
    QLockFile lock(lockPath(settingsPath));
    if (!lock.tryLock(0))
        return false;
    const QByteArray mark = markName(settingsPath);
    struct stat marked { };
    const bool isMarked = ::lstat(mark.constData(), &marked) == 0;
    const QFileInfo settings(linkTarget(settingsPath));
    for (const QString& name : settings.dir().entryList(QDir::Files | QDir::Hidden | QDir::NoSymLinks)) {
        const QByteArray path = QFile::encodeName(settings.dir().filePath(name));
        struct stat found { };
        if (!isTemporaryName(name, settings.fileName()) || ::lstat(path.constData(), &found) != 0)
            continue;
        if (found.st_size == 0 || (isMarked && isSameFile(found, marked)))
            (void)::unlink(path.constData());
    }
    (void)::unlink(mark.constData());
    return true;
}
