#include "services/simulator/control/ControlClient.h"

#include <QFileInfo>
#include <QLocalSocket>

namespace {

constexpr int timeoutMs = 10'000;

} // namespace

std::optional<QByteArray> callControl(const QString& socketPath, const QByteArray& line, QString& error)
{
    QLocalSocket socket;
    socket.connectToServer(QFileInfo(socketPath).absoluteFilePath());
    if (!socket.waitForConnected(timeoutMs)) {
        error = QStringLiteral("no simulator answers at %1 (%2)").arg(socketPath, socket.errorString());
        return std::nullopt;
    }
    socket.write(line + '\n');
    while (!socket.canReadLine()) {
        if (!socket.waitForReadyRead(timeoutMs)) {
            error = QStringLiteral("the simulator gave no answer (%1)").arg(socket.errorString());
            return std::nullopt;
        }
    }
    return socket.readLine();
}
