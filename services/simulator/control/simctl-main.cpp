#include "services/simulator/control/ControlSocket.h"
#include "services/simulator/control/SimctlRequest.h"

#include <QCoreApplication>
#include <QJsonDocument>

#include <cstdio>

namespace {

enum ExitCode {
    Done = 0,
    Refused = 1,
    Usage = 2,
    NoSimulator = 3,
};

void print(std::FILE* stream, const QString& text)
{
    (void)std::fputs(text.toLocal8Bit().constData(), stream);
}

int complain(const QString& what, ExitCode code)
{
    print(stderr, QStringLiteral("pellvane-simctl: %1\n").arg(what));
    return code;
}

int report(const QJsonObject& answer)
{
    if (!answer.value(QStringLiteral("ok")).toBool())
        return complain(answer.value(QStringLiteral("error")).toString(), Refused);
    const QJsonObject status = answer.value(QStringLiteral("status")).toObject();
    if (!status.isEmpty())
        print(stdout, QString::fromUtf8(QJsonDocument(status).toJson()));
    return Done;
}

} // namespace

int main(int argumentCount, char** arguments)
{
    const QCoreApplication application(argumentCount, arguments);
    const QStringList words = QCoreApplication::arguments().mid(1);
    if (words.contains(QStringLiteral("--help"))) {
        print(stdout, simctlHelp());
        return Done;
    }
    if (words.contains(QStringLiteral("--version"))) {
        print(stdout, QStringLiteral("pellvane-simctl " SIMULATOR_VERSION "\n"));
        return Done;
    }

    QString error;
    const auto request = readSimctlArguments(words, error);
    if (!request)
        return complain(error + QStringLiteral(" (see --help)"), Usage);
    const std::string path = request->controlPath.isEmpty() ? defaultControlPath(request->instance.toStdString())
                                                            : request->controlPath.toStdString();
    std::string reason;
    const auto answer
        = callControl(path, QJsonDocument(request->command).toJson(QJsonDocument::Compact) + '\n', reason);
    if (!answer)
        return complain(QString::fromStdString(reason), NoSimulator);
    return report(QJsonDocument::fromJson(*answer).object());
}
