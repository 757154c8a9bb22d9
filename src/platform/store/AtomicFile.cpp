#include "platform/store/AtomicFile.h"

#include "posix/FileDescriptor.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <optional>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr mode_t privateFileMode = 0600;
constexpr mode_t privateFolderMode = 0700;
constexpr int keptFileLimit = 1000; // more than this many damaged files are nobody's to keep
constexpr int openingLimit = 100; // other programs may make and remove the second file in between

bool writeAll(int descriptor, const QByteArray& content)
{
    qsizetype written = 0;
    while (written < content.size()) {
        const ssize_t count
            = ::write(descriptor, content.constData() + written, static_cast<std::size_t>(content.size() - written));
        if (count < 0 && errno != EINTR)
            return false;
        written += count > 0 ? count : 0;
    }
    return true;
}

QString folderOf(const QString& path)
{
    return QFileInfo(path).absolutePath();
}

bool hasName(const FileDescriptor& file, const QByteArray& name)
{
    struct stat opened { };
    struct stat named { };
    return ::fstat(file.get(), &opened) == 0 && ::lstat(name.constData(), &named) == 0 && opened.st_dev == named.st_dev
        && opened.st_ino == named.st_ino;
}

// Until the descriptor is closed, and by the end of its process at the latest. False while another program holds it:
// that one is not waited for, since it could be one that was stopped. Where the file system knows no locks, nobody
// does.
bool lock(const FileDescriptor& file)
{
    return ::flock(file.get(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

// Removes a second file that nobody writes any more: whoever writes one holds its lock. A link in its place is
// removed, never followed. False while it is being written.
bool removeLeftover(const QByteArray& name)
{
    const FileDescriptor leftover(::open(name.constData(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (leftover && !lock(leftover))
        return false;
    if (leftover ? hasName(leftover, name) : errno == ELOOP || errno == EACCES)
        (void)::unlink(name.constData());
    return true;
}

// Makes the second file and locks it. Between the two, another program may take it for a leftover.
FileDescriptor makeSecondFile(const QByteArray& name)
{
    for (int attempt = 0; attempt < openingLimit; ++attempt) {
        FileDescriptor file(
            ::open(name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, privateFileMode));
        if (file && lock(file) && hasName(file, name))
            return file;
        if (!file && (errno != EEXIST || !removeLeftover(name)))
            break;
    }
    return {};
}

bool fillAndRename(const FileDescriptor& file, const QByteArray& from, const QString& to, const QByteArray& content)
{
    return writeAll(file.get(), content) && ::fsync(file.get()) == 0
        && ::rename(from.constData(), QFile::encodeName(to).constData()) == 0;
}

bool isFolder(const QByteArray& name)
{
    struct stat status { };
    return ::stat(name.constData(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool haveSameContent(const QString& left, const QString& right)
{
    QFile leftFile(left);
    QFile rightFile(right);
    if (leftFile.size() != rightFile.size() || !leftFile.open(QIODevice::ReadOnly)
        || !rightFile.open(QIODevice::ReadOnly))
        return false;
    constexpr qint64 chunk = 65536;
    while (!leftFile.atEnd())
        if (leftFile.read(chunk) != rightFile.read(chunk))
            return false;
    return leftFile.error() == QFileDevice::NoError && rightFile.error() == QFileDevice::NoError;
}

bool copyFile(const QString& from, const QString& to)
{
    QFile file(from);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray content = file.readAll();
    return file.error() == QFileDevice::NoError && writeFileAtomically(to, content);
}

// A second name for the file; where the file system has none of these, a copy. Nothing when that name is taken.
std::optional<bool> keepUnder(const QString& path, const QString& keptPath)
{
    const QByteArray keptName = QFile::encodeName(keptPath);
    if (::link(QFile::encodeName(path).constData(), keptName.constData()) != 0) {
        if (errno == EEXIST)
            return haveSameContent(path, keptPath) ? std::optional(true) : std::nullopt;
        return copyFile(path, keptPath);
    }
    (void)::chmod(keptName.constData(), privateFileMode);
    syncFolder(folderOf(keptPath));
    return true;
}

} // namespace

QString linkTarget(const QString& path)
{
    const QString canonical = QFileInfo(path).canonicalFilePath();
    return canonical.isEmpty() ? path : canonical;
}

bool writeFileAtomically(const QString& path, const QByteArray& content)
{
    const QString target = linkTarget(path);
    if (!makePrivateFolders(folderOf(target)))
        return false;
    const QByteArray secondName = QFile::encodeName(target + QStringLiteral(".being-written"));
    const FileDescriptor file = makeSecondFile(secondName);
    if (!file)
        return false;
    if (!fillAndRename(file, secondName, target, content)) {
        (void)::unlink(secondName.constData());
        return false;
    }
    syncFolder(folderOf(target));
    return true;
}

bool makePrivateFolders(const QString& path)
{
    const QByteArray name = QFile::encodeName(path);
    if (::mkdir(name.constData(), privateFolderMode) == 0 || isFolder(name))
        return true;
    const QString parent = folderOf(path);
    return errno == ENOENT && parent != path && makePrivateFolders(parent)
        && (::mkdir(name.constData(), privateFolderMode) == 0 || isFolder(name));
}

bool makePrivateFile(const QString& path)
{
    if (!makePrivateFolders(folderOf(path)))
        return false;
    const FileDescriptor file(
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CREAT | O_CLOEXEC | O_NONBLOCK, privateFileMode));
    return file && ::fchmod(file.get(), privateFileMode) == 0;
}

void syncFolder(const QString& path)
{
    const FileDescriptor folder(::open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder)
        (void)::fsync(folder.get());
}

bool keepUnreadableFile(const QString& path)
{
    const QString source = linkTarget(path);
    if (QFileInfo(source).size() == 0)
        return true;
    for (int number = 1; number <= keptFileLimit; ++number) {
        const QString suffix = number == 1 ? QString() : QStringLiteral(".%1").arg(number);
        if (const auto kept = keepUnder(source, path + QStringLiteral(".unreadable") + suffix))
            return *kept;
    }
    return false;
}
