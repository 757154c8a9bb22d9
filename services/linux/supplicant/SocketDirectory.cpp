#include "services/linux/supplicant/SocketDirectory.h"

#include "posix/FileDescriptor.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include <cerrno>
#include <cstring>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

const QString prefix = QStringLiteral("pellvaned-");

QString parentDirectory()
{
    return ::access("/run", W_OK) == 0 ? QStringLiteral("/run")
                                       : QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
}

bool isLive(const QString& path)
{
    sockaddr_un address {};
    const QByteArray bytes = QFile::encodeName(path);
    if (static_cast<std::size_t>(bytes.size()) >= sizeof(address.sun_path))
        return true;
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, bytes.constData(), static_cast<std::size_t>(bytes.size()));
    const FileDescriptor socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    return ::connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0
        || errno != ECONNREFUSED;
}

// A directory without any socket may be one whose supplicant has only just been started.
bool isOld(const QDir& directory)
{
    constexpr qint64 startSeconds = 60;
    return QFileInfo(directory.path()).lastModified().secsTo(QDateTime::currentDateTime()) > startSeconds;
}

bool isStale(const QDir& directory)
{
    bool hasSocket = false;
    for (const QFileInfo& entry : directory.entryInfoList(QDir::System | QDir::Files)) {
        if (entry.isFile())
            continue;
        hasSocket = true;
        if (isLive(entry.filePath()))
            return false;
    }
    return hasSocket || isOld(directory);
}

} // namespace

std::unique_ptr<QTemporaryDir> makeSocketDirectory()
{
    return std::make_unique<QTemporaryDir>(parentDirectory() + QLatin1Char('/') + prefix + QStringLiteral("XXXXXX"));
}

void removeStaleSocketDirectories(const QString& parent)
{
    for (const QFileInfo& entry : QDir(parent).entryInfoList({ prefix + QLatin1Char('*') }, QDir::Dirs)) {
        QDir directory(entry.filePath());
        if (entry.ownerId() == ::geteuid() && !entry.isSymLink() && isStale(directory))
            (void)directory.removeRecursively();
    }
}

void removeStaleSocketDirectories()
{
    removeStaleSocketDirectories(parentDirectory());
}
