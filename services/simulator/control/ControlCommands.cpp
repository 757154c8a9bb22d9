#include "services/simulator/control/ControlCommands.h"

#include "services/simulator/control/StatusReport.h"
#include "services/simulator/scenario/ScenarioValues.h"
#include "services/simulator/service/OidCatalogue.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <array>
#include <limits>
#include <optional>

namespace {

constexpr std::int32_t minMoveDbm = -120;
constexpr std::int32_t maxMoveDbm = 0;
constexpr qint64 maxDelayMs = 600'000;

CommandOutcome refused(const QString& error)
{
    return { error, false };
}

CommandOutcome misused(const QString& error)
{
    return { error, true };
}

CommandOutcome outcomeOf(const QString& what, std::error_code error)
{
    return error ? refused(what + QStringLiteral(": ") + QString::fromStdString(error.message())) : CommandOutcome();
}

// Whether a word is the first of two allowed ones; std::nullopt and a reason if it is neither.
std::optional<bool> readChoice(const QString& word, const char* yes, const char* no, CommandOutcome& outcome)
{
    if (word == QLatin1String(yes))
        return true;
    if (word == QLatin1String(no))
        return false;
    outcome
        = refused(QStringLiteral("\"%1\" must be \"%2\" or \"%3\"").arg(word, QLatin1String(yes), QLatin1String(no)));
    return std::nullopt;
}

std::optional<qint64> readNumber(
    const QString& what, const QString& word, qint64 min, qint64 max, CommandOutcome& outcome)
{
    bool isNumber = false;
    const qint64 number = word.toLongLong(&isNumber);
    if (isNumber && number >= min && number <= max)
        return number;
    outcome = isNumber ? refused(QStringLiteral("%1 must be %2 to %3").arg(what).arg(min).arg(max))
                       : misused(QStringLiteral("%1 \"%2\" is not a number").arg(what, word));
    return std::nullopt;
}

// Finds a network by its BSSID or by a name that only one network has.
std::optional<MacAddress> findNetwork(SimulatorService& service, const QString& text, CommandOutcome& outcome)
{
    const std::string name = text.toStdString();
    const auto address = macAddressOf(name);
    std::optional<MacAddress> found;
    for (const ScenarioNetwork& network : service.card().stateAt(service.nowMs()).neighbourhood.networks()) {
        if (network.bssid == address)
            return network.bssid;
        if (network.ssid != name)
            continue;
        if (found) {
            outcome = refused(QStringLiteral("several networks are named \"%1\"; give the BSSID").arg(text));
            return std::nullopt;
        }
        found = network.bssid;
    }
    if (!found)
        outcome = refused(QStringLiteral("there is no network \"%1\"").arg(text));
    return found;
}

CommandOutcome insert(SimulatorService& service, const CommandWords&)
{
    return outcomeOf(QStringLiteral("the card cannot be inserted"), service.insert());
}

CommandOutcome eject(SimulatorService& service, const CommandWords&)
{
    service.eject();
    return {};
}

CommandOutcome hardwareRadio(SimulatorService& service, const CommandWords& words)
{
    CommandOutcome outcome;
    if (const auto isOn = readChoice(words.arguments[0], "on", "off", outcome))
        service.card().setHardwareRadio(*isOn, service.nowMs());
    return outcome;
}

CommandOutcome addNetwork(SimulatorService& service, const CommandWords& words)
{
    if (words.options.isEmpty())
        return misused(QStringLiteral("add-network needs a file or --toml"));
    const ScenarioResult result = parseScenarioNetwork(words.options.first().toStdString());
    if (!result.scenario) {
        const QString text = QString::fromStdString(result.error.text);
        return refused(result.error.line == 0
                ? text
                : QStringLiteral("%1:%2: %3").arg(result.error.line).arg(result.error.column).arg(text));
    }
    return service.card().addNetwork(result.scenario->networks.front(), service.nowMs())
        ? CommandOutcome()
        : refused(QStringLiteral("a network with this BSSID already exists"));
}

CommandOutcome removeNetwork(SimulatorService& service, const CommandWords& words)
{
    CommandOutcome outcome;
    if (const auto bssid = findNetwork(service, words.arguments[0], outcome))
        (void)service.card().removeNetwork(*bssid, service.nowMs());
    return outcome;
}

CommandOutcome move(SimulatorService& service, const CommandWords& words)
{
    CommandOutcome outcome;
    const auto signal = readNumber(QStringLiteral("the signal"), words.arguments[1], minMoveDbm, maxMoveDbm, outcome);
    if (!signal)
        return outcome;
    if (const auto bssid = findNetwork(service, words.arguments[0], outcome))
        (void)service.card().moveNetwork(*bssid, static_cast<std::int32_t>(*signal), service.nowMs());
    return outcome;
}

CommandOutcome raiseEvent(SimulatorService& service, const CommandWords& words)
{
    if (words.arguments[0] != QLatin1String("raise"))
        return misused(QStringLiteral("an event can only be raised"));
    service.card().raiseEvent();
    return {};
}

CommandOutcome ready(SimulatorService& service, const CommandWords& words)
{
    CommandOutcome outcome;
    if (const auto isHeld = readChoice(words.arguments[0], "hold", "release", outcome))
        service.card().holdReady(*isHeld);
    return outcome;
}

CommandOutcome reset(SimulatorService& service, const CommandWords&)
{
    service.card().reset(service.nowMs());
    return {};
}

CommandOutcome readDirection(const QString& word, Fault& fault)
{
    if (word == QLatin1String("query"))
        fault.direction = FaultDirection::Query;
    else if (word == QLatin1String("set"))
        fault.direction = FaultDirection::Set;
    else if (!word.isEmpty() && word != QLatin1String("both"))
        return refused(QStringLiteral("--on must be \"query\", \"set\" or \"both\""));
    return {};
}

CommandOutcome readArgument(const CommandWords& words, const QString& option, qint64 max, Fault& fault)
{
    CommandOutcome outcome;
    if (!words.options.contains(option))
        return refused(QStringLiteral("%1 must be 0 to %2").arg(option).arg(max));
    if (const auto number = readNumber(option, words.options[option], 0, max, outcome))
        fault.argument = static_cast<std::uint32_t>(*number);
    return outcome;
}

CommandOutcome readTimes(const QString& word, Fault& fault)
{
    CommandOutcome outcome;
    if (word.isEmpty())
        return outcome;
    constexpr qint64 max = std::numeric_limits<std::uint32_t>::max();
    if (const auto times = readNumber(QStringLiteral("--times"), word, 1, max, outcome))
        fault.remainingTimes = static_cast<std::uint32_t>(*times);
    return outcome;
}

CommandOutcome readOid(const QString& word, Fault& fault)
{
    if (word.isEmpty() || word == QLatin1String("any"))
        return {};
    if (targetOfFault(fault.kind) != FaultTarget::Request)
        return refused(QStringLiteral("this kind of fault takes no OID"));
    fault.oid = oidFromText(word.toStdString());
    return fault.oid ? CommandOutcome() : refused(QStringLiteral("\"%1\" is not an OID").arg(word));
}

CommandOutcome addFault(SimulatorService& service, const CommandWords& words)
{
    const auto kind = faultFromName(words.arguments[0].toStdString());
    if (!kind)
        return refused(QStringLiteral("\"%1\" is not a kind of fault").arg(words.arguments[0]));
    Fault fault;
    fault.kind = *kind;
    CommandOutcome outcome;
    if (fault.kind == FaultKind::Delay)
        outcome = readArgument(words, QStringLiteral("--ms"), maxDelayMs, fault);
    if (fault.kind == FaultKind::CutShort)
        outcome = readArgument(words, QStringLiteral("--bytes"), std::numeric_limits<std::uint16_t>::max(), fault);
    if (outcome.error.isEmpty())
        outcome = readOid(words.options.value(QStringLiteral("--oid")), fault);
    if (outcome.error.isEmpty())
        outcome = readDirection(words.options.value(QStringLiteral("--on")), fault);
    if (outcome.error.isEmpty())
        outcome = readTimes(words.options.value(QStringLiteral("--times")), fault);
    if (outcome.error.isEmpty())
        service.faults().add(fault);
    return outcome;
}

CommandOutcome clearFaults(SimulatorService& service, const CommandWords&)
{
    service.faults().clear();
    return {};
}

CommandOutcome drop(SimulatorService& service, const CommandWords&)
{
    service.dropConnections();
    return {};
}

CommandOutcome record(SimulatorService& service, const CommandWords& words)
{
    const bool isOn = words.arguments[0] == QLatin1String("on");
    if (isOn != (words.arguments.size() == 2))
        return misused(QStringLiteral("use \"record on FILE\" or \"record off\""));
    if (isOn)
        return outcomeOf(words.arguments[1], service.recorder().start(words.arguments[1].toStdString()));
    CommandOutcome outcome;
    if (readChoice(words.arguments[0], "on", "off", outcome))
        service.recorder().stop();
    return outcome;
}

CommandOutcome status(SimulatorService&, const CommandWords&)
{
    return {};
}

constexpr std::string_view networkOptions[] { "--toml" };
constexpr std::string_view faultOptions[] { "--oid", "--on", "--times", "--ms", "--bytes" };

constexpr std::array commands {
    ControlCommand { "insert", "", "insert the card into its slot", 0, 0, {}, insert },
    ControlCommand { "eject", "", "eject the card: remove its socket and close every connection", 0, 0, {}, eject },
    ControlCommand { "hw-radio", "on|off", "turn the radio switch of the card on or off", 1, 1, {}, hardwareRadio },
    ControlCommand { "reset", "", "reset the card: clear settings and link, raise the event flag", 0, 0, {}, reset },
    ControlCommand {
        "event", "raise", "raise the event flag: the utility applies its profile again", 1, 1, {}, raiseEvent },
    ControlCommand { "ready", "hold|release", "hold the ready flag at 0, or release it", 1, 1, {}, ready },
    ControlCommand { "add-network", "FILE|--toml TEXT", "add a network, given by the keys of one network table", 0, 0,
        networkOptions, addNetwork, FileArgument::Contents, 1 },
    ControlCommand { "remove-network", "NETWORK", "remove a network", 1, 1, {}, removeNetwork },
    ControlCommand { "move", "NETWORK DBM", "change the signal of a network, -120 to 0", 2, 2, {}, move },
    ControlCommand { "fault", "KIND [OPTION…]", "add a fault", 1, 1, faultOptions, addFault },
    ControlCommand { "clear-faults", "", "remove all faults", 0, 0, {}, clearFaults },
    ControlCommand { "drop", "", "close every connection to the card, which stays inserted", 0, 0, {}, drop },
    ControlCommand { "record", "on FILE|off", "start or stop recording requests, keys included, as JSON lines", 1, 2,
        {}, record, FileArgument::Path, 2 },
    ControlCommand {
        "status", "", "print the state of card and networks as JSON; of keys only the lengths", 0, 0, {}, status },
};

QStringList wordsOf(const QJsonDocument& document)
{
    QStringList words;
    for (const auto& word : document.array()) {
        if (!word.isString())
            return {};
        words.append(word.toString());
    }
    return words;
}

CommandOutcome execute(SimulatorService& service, const QStringList& words)
{
    if (words.isEmpty())
        return misused(QStringLiteral("the line is not a JSON array of words"));
    const ControlCommand* command = findControlCommand(words[0]);
    if (!command)
        return misused(QStringLiteral("\"%1\" is not a command").arg(words[0]));
    QString error;
    const auto split = splitWords(words.mid(1), command->options, error);
    if (!split)
        return misused(error);
    const qsizetype count = split->arguments.size();
    if (count < command->minArguments || count > command->maxArguments)
        return misused(QStringLiteral("wrong number of arguments for %1").arg(words[0]));
    return command->run(service, *split);
}

} // namespace

std::span<const ControlCommand> controlCommands()
{
    return commands;
}

const ControlCommand* findControlCommand(const QString& name)
{
    const auto found = std::find_if(commands.begin(), commands.end(),
        [text = name.toStdString()](const ControlCommand& command) { return command.name == text; });
    return found == commands.end() ? nullptr : &*found;
}

QByteArray answerControlLine(SimulatorService& service, const QByteArray& line)
{
    const QStringList words = wordsOf(QJsonDocument::fromJson(line));
    const CommandOutcome outcome = execute(service, words);
    QJsonObject answer { { QStringLiteral("ok"), outcome.error.isEmpty() } };
    if (!outcome.error.isEmpty())
        answer.insert(QStringLiteral("error"), outcome.error);
    else if (words[0] == QLatin1String("status"))
        answer.insert(QStringLiteral("status"), statusReport(service));
    if (outcome.isMisuse)
        answer.insert(QStringLiteral("usage"), true);
    return QJsonDocument(answer).toJson(QJsonDocument::Compact);
}
