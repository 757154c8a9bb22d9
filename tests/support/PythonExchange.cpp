#include "tests/support/PythonExchange.h"

#include <QProcess>

bool exchange(const QString& direction, const QString& source, const QString& target)
{
    QProcess python;
    python.setProcessChannelMode(QProcess::ForwardedChannels);
    python.start(QStringLiteral("/usr/bin/python3"), { QStringLiteral(EXCHANGE_PROGRAM), direction, source, target });
    return python.waitForFinished() && python.exitStatus() == QProcess::NormalExit && python.exitCode() == 0;
}
