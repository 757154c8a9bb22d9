#include "services/simulator/control/ControlClient.h"
#include "services/simulator/control/SimctlRequest.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

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

int fail(const QString& error, ExitCode code)
{
    const QString hint = code == Usage ? QStringLiteral(" (see --help)") : QString();
    print(stderr, QStringLiteral("pellvane-simctl: %1%2\n").arg(error, hint));
    return code;
}

int report(const QJsonObject& answer)
{
    if (!answer.value(QStringLiteral("ok")).toBool())
        return fail(answer.value(QStringLiteral("error")).toString(),
            answer.value(QStringLiteral("usage")).toBool() ? Usage : Refused);
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
        return fail(error, Usage);
    const QByteArray line = QJsonDocument(QJsonArray::fromStringList(request->words)).toJson(QJsonDocument::Compact);
    const auto answer = callControl(request->controlPath, line, error);
    return answer ? report(QJsonDocument::fromJson(*answer).object()) : fail(error, NoSimulator);
}
