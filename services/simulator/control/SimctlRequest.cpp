#include "services/simulator/control/SimctlRequest.h"

#include "services/simulator/control/ControlCommands.h"
#include "services/simulator/control/ControlPath.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cstdio>

namespace {

QString fromUtf8(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// Rows of two aligned columns.
template <typename Row> QString helpRows(std::span<const Row> rows)
{
    qsizetype width = 0;
    for (const Row& row : rows)
        width = std::max(width, fromUtf8(row.name).size() + 1 + fromUtf8(row.arguments).size());
    QString text;
    for (const Row& row : rows) {
        const QString words = QStringLiteral("%1 %2").arg(fromUtf8(row.name), fromUtf8(row.arguments));
        text += QStringLiteral("  %1  %2\n").arg(words.leftJustified(width), fromUtf8(row.summary));
    }
    return text;
}

bool isOption(const QString& word)
{
    return word.startsWith(QLatin1String("--"));
}

std::optional<QString> readFile(const QString& path, QString& error)
{
    QFile file(path);
    const bool isOpen
        = path == QLatin1String("-") ? file.open(stdin, QIODevice::ReadOnly) : file.open(QIODevice::ReadOnly);
    if (!isOpen) {
        error = QStringLiteral("%1: %2").arg(path, file.errorString());
        return std::nullopt;
    }
    return QString::fromUtf8(file.readAll());
}

// The simulator runs in another directory and has its own standard input.
bool resolveFile(QStringList& words, QString& error)
{
    const ControlCommand* command = findControlCommand(words[0]);
    if (!command || command->file == FileArgument::None || words.size() <= command->fileWord
        || isOption(words[command->fileWord]))
        return true;
    QString& word = words[command->fileWord];
    if (command->file == FileArgument::Path) {
        word = QFileInfo(word).absoluteFilePath();
        return true;
    }
    const auto contents = readFile(word, error);
    if (!contents)
        return false;
    word = QStringLiteral("--toml=") + *contents;
    return true;
}

} // namespace

QString simctlHelp()
{
    return QStringLiteral(R"(Usage: pellvane-simctl [--instance NAME | --control PATH] COMMAND [ARGUMENT…]

Changes a simulated card (pellvane-sim) while it runs.

Commands:
%1
For add-network, FILE "-" is standard input. A NETWORK is a BSSID (00-11-22-33-44-55) or a name that only one network has.

Kinds of faults:
%2
Options of a fault:
  --oid OID            only this OID, by name or number (default: any)
  --on query|set|both  only queries or only sets (default: both)
  --times N            only N times (default: until clear-faults)
  --ms N               delay of the reply in milliseconds, for "delay"
  --bytes N            maximum size of the reply, for "cut"

Options:
  --instance NAME      the instance of the simulator (default: simulated)
  --control PATH       its control socket, if it is not the default socket of the instance
  --help, --version

Exit codes: 0 success, 1 the simulator refused, 2 invalid command line, 3 no simulator answers.
)")
        .arg(helpRows(controlCommands()), helpRows(faultKinds()));
}

std::optional<SimctlRequest> readSimctlArguments(const QStringList& arguments, QString& error)
{
    SimctlRequest request;
    QString instance = QStringLiteral("simulated");
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString name = arguments[i].section(QLatin1Char('='), 0, 0);
        const bool isInstance = name == QLatin1String("--instance");
        if (!isInstance && name != QLatin1String("--control")) {
            request.words.append(arguments[i]);
            continue;
        }
        const bool hasValue = arguments[i].contains(QLatin1Char('='));
        if (!hasValue && i + 1 >= arguments.size()) {
            error = QStringLiteral("option %1 needs a value").arg(name);
            return std::nullopt;
        }
        (isInstance ? instance : request.controlPath)
            = hasValue ? arguments[i].section(QLatin1Char('='), 1) : arguments[++i];
    }
    if (request.words.isEmpty()) {
        error = QStringLiteral("no command given");
        return std::nullopt;
    }
    if (request.controlPath.isEmpty())
        request.controlPath = defaultControlPath(instance);
    return resolveFile(request.words, error) ? std::optional(request) : std::nullopt;
}
