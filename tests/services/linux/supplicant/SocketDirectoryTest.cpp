#include "services/linux/supplicant/SocketDirectory.h"

#include "services/linux/supplicant/ControlSocket.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

#include <cstring>

#include <sys/socket.h>
#include <sys/un.h>

namespace {

// A bound datagram socket; its file stays when it is closed.
FileDescriptor listenAt(const QString& path)
{
    FileDescriptor socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    sockaddr_un address {};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path.toUtf8().constData(), sizeof(address.sun_path) - 1);
    EXPECT_EQ(::bind(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);
    return socket;
}

} // namespace

TEST(SocketDirectory, OnlyThoseOfDeadSupplicantsAreRemoved)
{
    const QTemporaryDir parent(QStringLiteral("/tmp/stale-XXXXXX"));
    const QDir folder(parent.path());
    for (const char* const name : { "pellvaned-dead", "pellvaned-live", "pellvaned-new", "other-dead" })
        ASSERT_TRUE(folder.mkdir(QString::fromLatin1(name)));
    (void)listenAt(folder.filePath(QStringLiteral("pellvaned-dead/wlan0")));
    (void)listenAt(folder.filePath(QStringLiteral("other-dead/wlan0")));
    const FileDescriptor live = listenAt(folder.filePath(QStringLiteral("pellvaned-live/wlan0")));
    removeStaleSocketDirectories(parent.path());
    EXPECT_EQ(folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name),
        (QStringList {
            QStringLiteral("other-dead"), QStringLiteral("pellvaned-live"), QStringLiteral("pellvaned-new") }));
}
