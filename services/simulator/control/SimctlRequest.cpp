#include "services/simulator/control/SimctlRequest.h"

#include "services/simulator/service/Faults.h"

#include <QFile>
#include <QFileInfo>
#include <QMap>

#include <array>
#include <cstdio>

namespace {

struct Arguments {
    QStringList words;
    QMap<QString, QString> options;
};

// A signal of -70 is a word, not an option.
bool isOption(const QString& argument)
{
    return argument.startsWith(QLatin1String("--"));
}

bool split(const QStringList& arguments, Arguments& result, QString& error)
{
    static const QStringList known { QStringLiteral("--control"), QStringLiteral("--instance"), QStringLiteral("--oid"),
        QStringLiteral("--on"), QStringLiteral("--times"), QStringLiteral("--ms"), QStringLiteral("--bytes"),
        QStringLiteral("--toml") };
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        if (!isOption(arguments[i])) {
            result.words.append(arguments[i]);
            continue;
        }
        const QString name = arguments[i].section(QLatin1Char('='), 0, 0);
        const bool hasValue = arguments[i].contains(QLatin1Char('='));
        if (!known.contains(name)) {
            error = QStringLiteral("unknown option %1").arg(name);
            return false;
        }
        if (!hasValue && i + 1 >= arguments.size()) {
            error = QStringLiteral("option %1 needs a value").arg(name);
            return false;
        }
        result.options.insert(name, hasValue ? arguments[i].section(QLatin1Char('='), 1) : arguments[++i]);
    }
    return true;
}

bool addNumber(QJsonObject& command, const char* member, const QString& text, QString& error)
{
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (!isNumber) {
        error = QStringLiteral("\"%1\" is no number").arg(text);
        return false;
    }
    command.insert(QLatin1String(member), number);
    return true;
}

bool readNetworkFile(const QString& path, QJsonObject& command, QString& error)
{
    QFile file(path);
    const bool isOpen
        = path == QLatin1String("-") ? file.open(stdin, QIODevice::ReadOnly) : file.open(QIODevice::ReadOnly);
    if (!isOpen) {
        error = QStringLiteral("%1: %2").arg(path, file.errorString());
        return false;
    }
    command.insert(QStringLiteral("toml"), QString::fromUtf8(file.readAll()));
    return true;
}

bool readNothing(const Arguments&, QJsonObject&, QString&)
{
    return true;
}

bool readState(const Arguments& arguments, QJsonObject& command, QString&)
{
    command.insert(QStringLiteral("state"), arguments.words[1]);
    return true;
}

bool readAddNetwork(const Arguments& arguments, QJsonObject& command, QString& error)
{
    const QString inlineText = arguments.options.value(QStringLiteral("--toml"));
    if (inlineText.isEmpty() == (arguments.words.size() < 2)) {
        error = QStringLiteral("add-network needs a file or --toml");
        return false;
    }
    if (inlineText.isEmpty())
        return readNetworkFile(arguments.words[1], command, error);
    command.insert(QStringLiteral("toml"), inlineText);
    return true;
}

bool readNetwork(const Arguments& arguments, QJsonObject& command, QString&)
{
    command.insert(QStringLiteral("network"), arguments.words[1]);
    return true;
}

bool readMove(const Arguments& arguments, QJsonObject& command, QString& error)
{
    return readNetwork(arguments, command, error) && addNumber(command, "signal_dbm", arguments.words[2], error);
}

bool readEvent(const Arguments& arguments, QJsonObject&, QString& error)
{
    if (arguments.words[1] == QLatin1String("raise"))
        return true;
    error = QStringLiteral("an event can only be raised");
    return false;
}

bool readReady(const Arguments& arguments, QJsonObject& command, QString&)
{
    command.insert(QStringLiteral("action"), arguments.words[1]);
    return true;
}

bool readFault(const Arguments& arguments, QJsonObject& command, QString& error)
{
    command.insert(QStringLiteral("kind"), arguments.words[1]);
    for (const char* text : { "oid", "on" }) {
        const QString value = arguments.options.value(QLatin1String("--") + QLatin1String(text));
        if (!value.isEmpty())
            command.insert(QLatin1String(text), value);
    }
    for (const char* number : { "times", "ms", "bytes" }) {
        const QString value = arguments.options.value(QLatin1String("--") + QLatin1String(number));
        if (!value.isEmpty() && !addNumber(command, number, value, error))
            return false;
    }
    return true;
}

bool readRecord(const Arguments& arguments, QJsonObject& command, QString& error)
{
    const bool isOn = arguments.words[1] == QLatin1String("on");
    if (isOn != (arguments.words.size() == 3)) {
        error = QStringLiteral("it is \"record on FILE\" or \"record off\"");
        return false;
    }
    command.insert(QStringLiteral("state"), arguments.words[1]);
    if (isOn)
        command.insert(QStringLiteral("file"), QFileInfo(arguments.words[2]).absoluteFilePath());
    return true;
}

struct Verb {
    const char* name;
    qsizetype fewestWords; // behind the verb
    qsizetype mostWords;
    bool (*read)(const Arguments&, QJsonObject&, QString&);
};

constexpr std::array verbs {
    Verb { "insert", 0, 0, readNothing },
    Verb { "eject", 0, 0, readNothing },
    Verb { "hw-radio", 1, 1, readState },
    Verb { "add-network", 0, 1, readAddNetwork },
    Verb { "remove-network", 1, 1, readNetwork },
    Verb { "move", 2, 2, readMove },
    Verb { "event", 1, 1, readEvent },
    Verb { "ready", 1, 1, readReady },
    Verb { "reset", 0, 0, readNothing },
    Verb { "fault", 1, 1, readFault },
    Verb { "clear-faults", 0, 0, readNothing },
    Verb { "drop", 0, 0, readNothing },
    Verb { "record", 1, 2, readRecord },
    Verb { "status", 0, 0, readNothing },
};

const Verb* findVerb(const QString& name)
{
    for (const Verb& verb : verbs) {
        if (name == QLatin1String(verb.name))
            return &verb;
    }
    return nullptr;
}

} // namespace

QString simctlHelp()
{
    QStringList kinds;
    for (const std::string_view name : faultNames())
        kinds.append(QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())));
    return QStringLiteral(R"(Usage: pellvane-simctl [--instance NAME | --control PATH] COMMAND [ARGUMENT…]

Changes a simulated card (pellvane-sim) while it runs.

  insert                     put the card into its slot
  eject                      pull it out
  hw-radio on|off            move the radio switch on the card
  reset                      reset the card: its settings are lost, the event flag is raised
  event raise                raise the event flag: the profile is to be applied again
  ready hold|release         keep the ready flag at 0, or let it go
  add-network FILE           put up a network: one table of a scenario file; "-" is standard input
  add-network --toml TEXT    the same from the command line
  remove-network NETWORK     take a network down
  move NETWORK DBM           give a network another signal, -120 to 0
  fault KIND [OPTIONS]       add a fault
  clear-faults               take all faults back
  drop                       end every connection to the card
  record on FILE | off       record requests, keys included, as JSON lines
  status                     print the state of the card and its neighbourhood as JSON

A NETWORK is a BSSID (00-11-22-33-44-55) or a name that only one network has.

Faults: %1
  --oid OID                  only this object, by name or number (default: any)
  --on query|set|both        only queries or sets (default: both)
  --times N                  only so often (default: until clear-faults)
  --ms N                     how late the reply of "delay" comes
  --bytes N                  how much of the reply "cut" leaves

Options:
  --instance NAME            the instance of the simulator (default: simulated)
  --control PATH             its control socket, where it is not the instance's own
  --help, --version

Exit codes: 0 done, 1 the simulator refused, 2 the command line makes no sense, 3 no simulator answers.
)")
        .arg(kinds.join(QStringLiteral(", ")));
}

std::optional<SimctlRequest> readSimctlArguments(const QStringList& arguments, QString& error)
{
    Arguments split;
    if (!::split(arguments, split, error))
        return std::nullopt;
    if (split.words.isEmpty()) {
        error = QStringLiteral("no command is given");
        return std::nullopt;
    }
    const Verb* verb = findVerb(split.words.first());
    if (!verb) {
        error = QStringLiteral("\"%1\" is no command").arg(split.words.first());
        return std::nullopt;
    }
    const qsizetype count = split.words.size() - 1;
    if (count < verb->fewestWords || count > verb->mostWords) {
        error = QStringLiteral("%1 takes another number of arguments").arg(split.words.first());
        return std::nullopt;
    }
    SimctlRequest request;
    request.controlPath = split.options.value(QStringLiteral("--control"));
    request.instance = split.options.value(QStringLiteral("--instance"), QStringLiteral("simulated"));
    request.command.insert(QStringLiteral("command"), split.words.first());
    if (!verb->read(split, request.command, error))
        return std::nullopt;
    return request;
}
