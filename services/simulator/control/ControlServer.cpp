#include "services/simulator/control/ControlServer.h"

#include "posix/SocketAddress.h"
#include "posix/SystemError.h"

#include <QLocalSocket>

#include <filesystem>
#include <utility>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

std::error_code openPrivateDirectory(const fs::path& path, FileDescriptor& directory)
{
    if (::mkdir(path.c_str(), 0700) != 0 && errno != EEXIST)
        return lastSystemError();
    directory = FileDescriptor(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    struct stat status { };
    if (!directory || ::fstat(directory.get(), &status) != 0)
        return lastSystemError();
    const bool isPrivate = status.st_uid == ::geteuid() && (status.st_mode & (S_IRWXG | S_IRWXO)) == 0;
    return isPrivate ? std::error_code() : std::make_error_code(std::errc::permission_denied);
}

} // namespace

ControlServer::ControlServer(Answer answer)
    : m_answer(std::move(answer))
{
}

std::error_code ControlServer::listen(const std::string& socketPath)
{
    if (!socketAddress(socketPath))
        return std::make_error_code(std::errc::filename_too_long);
    const fs::path path(socketPath);
    FileDescriptor directory;
    if (const auto error = openPrivateDirectory(path.has_parent_path() ? path.parent_path() : ".", directory))
        return error;
    std::error_code error;
    auto socket
        = ListeningSocket::listen(std::move(directory), path.filename(), SOCK_STREAM, error, { .socketMode = 0600 });
    if (socket)
        m_acceptor.emplace(std::move(*socket), [this](FileDescriptor client) { addClient(std::move(client)); });
    return error;
}

void ControlServer::addClient(FileDescriptor connection)
{
    auto* const client = new QLocalSocket(&m_clients);
    if (!client->setSocketDescriptor(connection.get())) {
        delete client;
        return;
    }
    (void)connection.release();
    client->setReadBufferSize(maxRequestBytes + 1);
    QObject::connect(client, &QLocalSocket::readyRead, client, [this, client] { answerLines(*client); });
    QObject::connect(client, &QLocalSocket::bytesWritten, client, [this, client] { answerLines(*client); });
    QObject::connect(client, &QLocalSocket::disconnected, client, &QObject::deleteLater);
}

void ControlServer::answerLines(QLocalSocket& client) const
{
    // A client that does not read its answer gets no further ones, so that unread answers do not pile up.
    while (client.bytesToWrite() == 0 && client.canReadLine())
        client.write(m_answer(client.readLine().chopped(1)) + '\n');
    if (client.bytesAvailable() > maxRequestBytes && !client.canReadLine())
        client.abort();
}
