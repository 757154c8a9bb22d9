#include "platform/AtomicFile.h"

#include "platform/FileDescriptor.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <optional>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr mode_t privateFileMode = 0600;
constexpr mode_t privateFolderMode = 0700;
constexpr int keptFileLimit = 1000; // more than this many damaged files are nobody's to keep

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

// Where a link points to; the path itself otherwise.
QString linkTarget(const QString& path)
{
    const QString canonical = QFileInfo(path).canonicalFilePath();
    return canonical.isEmpty() ? path : canonical;
}

QString folderOf(const QString& path)
{
    return QFileInfo(path).absolutePath();
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

bool writeFileAtomically(const QString& path, const QByteArray& content)
{
    const QString target = linkTarget(path);
    if (!makePrivateFolders(folderOf(target)))
        return false;
    QByteArray temporaryName = QFile::encodeName(target + QStringLiteral(".XXXXXX"));
    const FileDescriptor file(::mkostemp(temporaryName.data(), O_CLOEXEC)); // makes it 0600
    if (!file)
        return false;
    if (!fillAndRename(file, temporaryName, target, content)) {
        (void)::unlink(temporaryName.constData());
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
