#include "services/simulator/control/ControlCommands.h"

#include "services/card/OidCatalogue.h"
#include "services/simulator/control/StatusReport.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <limits>
#include <optional>

namespace {

constexpr std::int32_t weakestMoveDbm = -120;
constexpr std::int32_t strongestMoveDbm = 0;
constexpr qint64 longestDelayMs = 600'000;

// The reason of a failure; empty for success.
using Outcome = QString;

QString memberText(const QJsonObject& command, const char* member)
{
    return command.value(QLatin1String(member)).toString();
}

std::optional<qint64> memberNumber(const QJsonObject& command, const char* member)
{
    const QJsonValue value = command.value(QLatin1String(member));
    if (!value.isDouble() || value.toDouble() != static_cast<double>(value.toInteger()))
        return std::nullopt;
    return value.toInteger();
}

// One of two words; nothing for any other.
std::optional<bool> memberChoice(const QJsonObject& command, const char* member, const char* yes, const char* no)
{
    const QString text = memberText(command, member);
    if (text == QLatin1String(yes))
        return true;
    if (text == QLatin1String(no))
        return false;
    return std::nullopt;
}

Outcome systemError(const QString& what)
{
    return what + QStringLiteral(": ") + QString::fromLocal8Bit(std::strerror(errno));
}

std::optional<MacAddress> addressFromText(const QString& text)
{
    QString digits = text;
    digits.remove(QLatin1Char('-')).remove(QLatin1Char(':'));
    const QByteArray octets = QByteArray::fromHex(digits.toLatin1());
    MacAddress address {};
    if (digits.size() != 12 || static_cast<std::size_t>(octets.size()) != address.size())
        return std::nullopt;
    std::copy(octets.begin(), octets.end(), address.begin());
    return address;
}

// A network by its BSSID or by a name that only one has.
std::optional<MacAddress> networkMeant(SimulatorService& service, const QString& text, Outcome& why)
{
    const auto& networks = service.card().stateAt(service.nowMs()).neighbourhood.networks();
    const auto address = addressFromText(text);
    const std::string name = text.toStdString();
    std::optional<MacAddress> meant;
    for (const ScenarioNetwork& network : networks) {
        if (network.bssid == address)
            return network.bssid;
        if (network.ssid != name)
            continue;
        if (meant) {
            why = QStringLiteral("several networks are named \"%1\"; give the BSSID").arg(text);
            return std::nullopt;
        }
        meant = network.bssid;
    }
    if (!meant)
        why = QStringLiteral("there is no network \"%1\"").arg(text);
    return meant;
}

Outcome insert(SimulatorService& service, const QJsonObject&)
{
    return service.insert() ? Outcome() : systemError(QStringLiteral("the card cannot be inserted"));
}

Outcome eject(SimulatorService& service, const QJsonObject&)
{
    service.eject();
    return {};
}

Outcome hardwareRadio(SimulatorService& service, const QJsonObject& command)
{
    const auto isOn = memberChoice(command, "state", "on", "off");
    if (!isOn)
        return QStringLiteral("\"state\" must be \"on\" or \"off\"");
    service.card().setHardwareRadio(*isOn, service.nowMs());
    return {};
}

Outcome addNetwork(SimulatorService& service, const QJsonObject& command)
{
    const ScenarioResult result = parseScenarioNetwork(memberText(command, "toml").toStdString());
    if (!result.scenario || result.scenario->networks.empty()) {
        const QString text = QString::fromStdString(result.error.text);
        return result.error.line == 0
            ? text
            : QStringLiteral("%1:%2: %3").arg(result.error.line).arg(result.error.column).arg(text);
    }
    return service.card().addNetwork(result.scenario->networks.front(), service.nowMs())
        ? Outcome()
        : QStringLiteral("a network with this BSSID is there already");
}

Outcome removeNetwork(SimulatorService& service, const QJsonObject& command)
{
    Outcome why;
    if (const auto bssid = networkMeant(service, memberText(command, "network"), why))
        (void)service.card().removeNetwork(*bssid, service.nowMs());
    return why;
}

Outcome move(SimulatorService& service, const QJsonObject& command)
{
    const auto signal = memberNumber(command, "signal_dbm");
    if (!signal || *signal < weakestMoveDbm || *signal > strongestMoveDbm)
        return QStringLiteral("\"signal_dbm\" must be %1 to %2").arg(weakestMoveDbm).arg(strongestMoveDbm);
    Outcome why;
    if (const auto bssid = networkMeant(service, memberText(command, "network"), why))
        (void)service.card().moveNetwork(*bssid, static_cast<std::int32_t>(*signal), service.nowMs());
    return why;
}

Outcome raiseEvent(SimulatorService& service, const QJsonObject&)
{
    service.card().raiseEvent();
    return {};
}

Outcome ready(SimulatorService& service, const QJsonObject& command)
{
    const auto isHeld = memberChoice(command, "action", "hold", "release");
    if (!isHeld)
        return QStringLiteral("\"action\" must be \"hold\" or \"release\"");
    service.card().holdReady(*isHeld);
    return {};
}

Outcome reset(SimulatorService& service, const QJsonObject&)
{
    service.card().reset(service.nowMs());
    return {};
}

Outcome readDirection(const QJsonObject& command, Fault& fault)
{
    const QString direction = memberText(command, "on");
    if (direction == QLatin1String("query"))
        fault.direction = FaultDirection::Query;
    else if (direction == QLatin1String("set"))
        fault.direction = FaultDirection::Set;
    else if (!direction.isEmpty() && direction != QLatin1String("both"))
        return QStringLiteral("\"on\" must be \"query\", \"set\" or \"both\"");
    return {};
}

Outcome readArgument(const QJsonObject& command, const char* member, qint64 highest, Fault& fault)
{
    const auto argument = memberNumber(command, member);
    if (!argument || *argument < 0 || *argument > highest)
        return QStringLiteral("\"%1\" must be 0 to %2").arg(QLatin1String(member)).arg(highest);
    fault.argument = static_cast<std::uint32_t>(*argument);
    return {};
}

Outcome readTimes(const QJsonObject& command, Fault& fault)
{
    if (!command.contains(QLatin1String("times")))
        return {};
    const auto times = memberNumber(command, "times");
    if (!times || *times < 1 || *times > std::numeric_limits<std::uint32_t>::max())
        return QStringLiteral("\"times\" must be 1 or more");
    fault.remainingTimes = static_cast<std::uint32_t>(*times);
    return {};
}

Outcome readOid(const QJsonObject& command, Fault& fault)
{
    const QString text = memberText(command, "oid");
    if (text.isEmpty() || text == QLatin1String("any"))
        return {};
    if (isListFault(fault.kind) || isClientFault(fault.kind))
        return QStringLiteral("\"%1\" takes no OID").arg(memberText(command, "kind"));
    fault.oid = oidFromText(text.toStdString());
    return fault.oid ? Outcome() : QStringLiteral("\"%1\" is no OID").arg(text);
}

Outcome addFault(SimulatorService& service, const QJsonObject& command)
{
    const auto kind = faultFromName(memberText(command, "kind").toStdString());
    if (!kind)
        return QStringLiteral("\"%1\" is no kind of fault").arg(memberText(command, "kind"));
    Fault fault;
    fault.kind = *kind;
    Outcome why;
    if (fault.kind == FaultKind::Delay)
        why = readArgument(command, "ms", longestDelayMs, fault);
    if (fault.kind == FaultKind::CutShort)
        why = readArgument(command, "bytes", std::numeric_limits<std::uint16_t>::max(), fault);
    for (const auto read : { readOid, readDirection, readTimes }) {
        if (why.isEmpty())
            why = read(command, fault);
    }
    if (why.isEmpty())
        service.faults().add(fault);
    return why;
}

Outcome clearFaults(SimulatorService& service, const QJsonObject&)
{
    service.faults().clear();
    return {};
}

Outcome dropConnections(SimulatorService& service, const QJsonObject&)
{
    service.dropConnections();
    return {};
}

Outcome record(SimulatorService& service, const QJsonObject& command)
{
    const auto isOn = memberChoice(command, "state", "on", "off");
    if (!isOn)
        return QStringLiteral("\"state\" must be \"on\" or \"off\"");
    if (!*isOn) {
        service.recorder().stop();
        return {};
    }
    const QString path = memberText(command, "file");
    if (path.isEmpty())
        return QStringLiteral("\"file\" is missing");
    return service.recorder().start(path.toStdString()) ? Outcome() : systemError(path);
}

struct Command {
    const char* name;
    Outcome (*run)(SimulatorService&, const QJsonObject&);
};

constexpr std::array commands {
    Command { "insert", insert },
    Command { "eject", eject },
    Command { "hw-radio", hardwareRadio },
    Command { "add-network", addNetwork },
    Command { "remove-network", removeNetwork },
    Command { "move", move },
    Command { "event", raiseEvent },
    Command { "ready", ready },
    Command { "reset", reset },
    Command { "fault", addFault },
    Command { "clear-faults", clearFaults },
    Command { "drop", dropConnections },
    Command { "record", record },
    Command { "status", [](SimulatorService&, const QJsonObject&) { return Outcome(); } },
};

Outcome run(SimulatorService& service, const QJsonObject& command)
{
    const QString name = memberText(command, "command");
    for (const Command& row : commands) {
        if (name == QLatin1String(row.name))
            return row.run(service, command);
    }
    return QStringLiteral("\"%1\" is no command").arg(name);
}

} // namespace

QByteArray answerControlLine(SimulatorService& service, const QByteArray& line)
{
    const QJsonDocument document = QJsonDocument::fromJson(line);
    const QJsonObject command = document.object();
    const Outcome why = document.isObject() ? run(service, command) : QStringLiteral("the line is no JSON object");
    QJsonObject answer { { QStringLiteral("ok"), why.isEmpty() } };
    if (!why.isEmpty())
        answer.insert(QStringLiteral("error"), why);
    else if (memberText(command, "command") == QLatin1String("status"))
        answer.insert(QStringLiteral("status"), statusReport(service));
    return QJsonDocument(answer).toJson(QJsonDocument::Compact);
}
