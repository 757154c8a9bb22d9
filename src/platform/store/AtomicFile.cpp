#include "platform/store/AtomicFile.h"

#include "posix/SystemError.h"

#include <QFile>
#include <QFileInfo>

#include <cstdio>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr mode_t privateDirectoryMode = 0700;
constexpr std::chrono::milliseconds lockPollInterval { 2 };

QString directoryOf(const QString& path)
{
    return QFileInfo(path).absolutePath();
}

// Succeeds where the directory already exists.
std::error_code makeDirectory(const QString& path)
{
    const QByteArray name = QFile::encodeName(path);
    if (::mkdir(name.constData(), privateDirectoryMode) == 0)
        return {};
    const std::error_code error = lastSystemError();
    struct stat status { };
    return ::stat(name.constData(), &status) == 0 && S_ISDIR(status.st_mode) ? std::error_code() : error;
}

std::error_code writeAll(const FileDescriptor& file, const QByteArray& content)
{
    qsizetype written = 0;
    while (written < content.size()) {
        const ssize_t count
            = ::write(file.get(), content.constData() + written, static_cast<std::size_t>(content.size() - written));
        if (count < 0 && errno != EINTR)
            return lastSystemError();
        written += count > 0 ? count : 0;
    }
    return {};
}

bool hasName(const FileDescriptor& file, const QByteArray& name)
{
    struct stat opened { };
    struct stat named { };
    return ::fstat(file.get(), &opened) == 0 && ::lstat(name.constData(), &named) == 0 && opened.st_dev == named.st_dev
        && opened.st_ino == named.st_ino;
}

// False while another program holds the lock. A file system without locks counts as unlocked.
bool tryLock(const FileDescriptor& file)
{
    return ::flock(file.get(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

// Removes a temporary file whose writer has ended: a running one holds its lock, and the result is timed_out. A
// symbolic link under that name is removed, never followed.
std::error_code removeLeftover(const QByteArray& name)
{
    const FileDescriptor leftover(::open(name.constData(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (!leftover && errno != ELOOP && errno != EACCES)
        return errno == ENOENT ? std::error_code() : lastSystemError();
    if (leftover && !tryLock(leftover))
        return std::make_error_code(std::errc::timed_out);
    if (leftover && !hasName(leftover, name))
        return {};
    return ::unlink(name.constData()) == 0 || errno == ENOENT ? std::error_code() : lastSystemError();
}

// One attempt to create the temporary file and to lock it. Between these two steps another program may take the file
// for a leftover; the result is then neither a file nor an error.
std::error_code tryCreate(const QByteArray& name, FileDescriptor& file)
{
    FileDescriptor created(
        ::open(name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, privateFileMode));
    if (!created)
        return errno == EEXIST ? removeLeftover(name) : lastSystemError();
    if (tryLock(created) && hasName(created, name))
        file = std::move(created);
    return {};
}

std::error_code createLocked(const QByteArray& name, FileDescriptor& file, std::chrono::milliseconds timeout)
{
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    for (;;) {
        const std::error_code error = tryCreate(name, file);
        if (file || (error && error != std::errc::timed_out))
            return error;
        if (std::chrono::steady_clock::now() >= deadline)
            return std::make_error_code(std::errc::timed_out);
        if (error)
            std::this_thread::sleep_for(lockPollInterval);
    }
}

} // namespace

AtomicFile::AtomicFile(const QString& path)
    : m_target(linkTarget(path))
    , m_temporaryName(QFile::encodeName(m_target + QStringLiteral(".being-written")))
{
}

AtomicFile::~AtomicFile()
{
    if (m_temporary)
        (void)::unlink(m_temporaryName.constData());
}

SaveResult AtomicFile::open(std::chrono::milliseconds lockTimeout)
{
    if (SaveResult made = makePrivateDirectories(directoryOf(m_target)); !made)
        return made;
    if (const auto error = createLocked(m_temporaryName, m_temporary, lockTimeout))
        return { error, m_target };
    return {};
}

SaveResult AtomicFile::commit(const QByteArray& content)
{
    if (const auto error = writeAll(m_temporary, content))
        return { error, m_target };
    if (::fsync(m_temporary.get()) != 0
        || ::rename(m_temporaryName.constData(), QFile::encodeName(m_target).constData()) != 0)
        return { lastSystemError(), m_target };
    m_temporary.reset();
    syncDirectory(directoryOf(m_target));
    return {};
}

SaveResult writeFileAtomically(const QString& path, const QByteArray& content)
{
    AtomicFile file(path);
    if (SaveResult opened = file.open(); !opened)
        return opened;
    return file.commit(content);
}

QString linkTarget(const QString& path)
{
    const QString canonical = QFileInfo(path).canonicalFilePath();
    return canonical.isEmpty() ? path : canonical;
}

SaveResult makePrivateDirectories(const QString& path)
{
    std::error_code error = makeDirectory(path);
    const QString parent = directoryOf(path);
    if (error == std::errc::no_such_file_or_directory && parent != path) {
        if (SaveResult made = makePrivateDirectories(parent); !made)
            return made;
        error = makeDirectory(path);
    }
    return error ? SaveResult { error, path } : SaveResult();
}

void syncDirectory(const QString& path)
{
    const FileDescriptor directory(::open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (directory)
        (void)::fsync(directory.get());
}
