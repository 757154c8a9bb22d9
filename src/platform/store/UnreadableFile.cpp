#include "platform/store/UnreadableFile.h"

#include "platform/store/AtomicFile.h"
#include "platform/store/ClearingText.h"
#include "posix/SystemError.h"

#include <QFile>
#include <QFileInfo>

#include <optional>

#include <sys/stat.h>
#include <unistd.h>

namespace {

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

SaveResult copyFile(const QString& from, const QString& to)
{
    QFile file(from);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return { lastSystemError(), from };
    QByteArray content = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return { std::make_error_code(std::errc::io_error), from };
    SaveResult saved = writeFileAtomically(to, content);
    overwriteUnlessShared(content);
    return saved;
}

// A hard link, which needs no space on a full disk; where that is not possible, a copy. std::nullopt when the name is
// taken by other content.
std::optional<SaveResult> backUpAs(const QString& path, const QString& backupPath)
{
    const QByteArray backupName = QFile::encodeName(backupPath);
    if (::link(QFile::encodeName(path).constData(), backupName.constData()) != 0) {
        if (errno != EEXIST)
            return copyFile(path, backupPath);
        return haveSameContent(path, backupPath) ? std::optional(SaveResult()) : std::nullopt;
    }
    (void)::chmod(backupName.constData(), privateFileMode);
    syncDirectory(QFileInfo(backupPath).absolutePath());
    return SaveResult();
}

} // namespace

SaveResult backUpUnreadableFile(const QString& path, int maxBackups)
{
    const QString source = linkTarget(path);
    if (QFileInfo(source).size() == 0)
        return {};
    for (int number = 1; number <= maxBackups; ++number) {
        const QString suffix = number == 1 ? QString() : QStringLiteral(".%1").arg(number);
        if (auto result = backUpAs(source, path + QStringLiteral(".unreadable") + suffix))
            return *std::move(result);
    }
    return { std::make_error_code(std::errc::file_exists), path };
}
