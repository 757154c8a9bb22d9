#include "services/simulator/SimulatorOptions.h"

#include "services/simulator/control/ControlPath.h"

#include <QCommandLineParser>
#include <QStandardPaths>

namespace {

constexpr quint64 defaultSeed = 7100;

SimulatorCommandLine failure(const QString& error)
{
    return { std::nullopt, QStringLiteral("pellvane-sim: %1 (see --help)\n").arg(error), true };
}

// The instance name becomes the last component of two paths.
bool isInstanceName(const QString& name)
{
    return !name.isEmpty() && !name.startsWith(QLatin1Char('.')) && !name.contains(QLatin1Char('/'));
}

void describe(QCommandLineParser& parser)
{
    parser.setApplicationDescription(
        QStringLiteral("Simulates a wireless card and the networks around it as a driver service.\n"
                       "Ends on SIGTERM and SIGINT; pellvane-simctl changes the card while it runs."));
    parser.addOptions({
        { QStringLiteral("scenario"),
            QStringLiteral("The card and the networks to simulate (default: the built-in scenario)."),
            QStringLiteral("FILE") },
        { QStringLiteral("instance"), QStringLiteral("Name of the service (default: simulated)."),
            QStringLiteral("NAME"), QStringLiteral("simulated") },
        { QStringLiteral("root"),
            QStringLiteral("Registry to publish in (default: io-registry in the user's runtime directory)."),
            QStringLiteral("DIR") },
        { QStringLiteral("control"),
            QStringLiteral("Control socket (default: pellvane-sim/NAME.control in the user's runtime directory)."),
            QStringLiteral("PATH") },
        { QStringLiteral("record"),
            QStringLiteral(
                "Record every request, KEYS INCLUDED, as JSON lines in a file that only its owner can read."),
            QStringLiteral("FILE") },
        { QStringLiteral("seed"), QStringLiteral("Seed of signal drift and traffic (default: 7100)."),
            QStringLiteral("N"), QString::number(defaultSeed) },
        { QStringLiteral("ejected"), QStringLiteral("Start with the card ejected.") },
        { QStringLiteral("quiet"), QStringLiteral("Print only the line \"ready\" and errors.") },
    });
}

} // namespace

SimulatorCommandLine readSimulatorArguments(const QStringList& arguments)
{
    QCommandLineParser parser;
    describe(parser);
    const QCommandLineOption help = parser.addHelpOption();
    const QCommandLineOption version = parser.addVersionOption();
    if (!parser.parse(arguments))
        return failure(parser.errorText());
    if (parser.isSet(help))
        return { std::nullopt, parser.helpText(), false };
    if (parser.isSet(version))
        return { std::nullopt, QStringLiteral("pellvane-sim " SIMULATOR_VERSION "\n"), false };
    if (!parser.positionalArguments().isEmpty())
        return failure(QStringLiteral("unexpected argument \"%1\"").arg(parser.positionalArguments().constFirst()));

    const QString runtime = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    SimulatorOptions options;
    options.scenarioFile = parser.value(QStringLiteral("scenario"));
    options.instance = parser.value(QStringLiteral("instance"));
    if (!isInstanceName(options.instance))
        return failure(QStringLiteral("\"%1\" is not an instance name").arg(options.instance));
    options.root = parser.value(QStringLiteral("root"));
    if (options.root.isEmpty())
        options.root = runtime + QStringLiteral("/io-registry");
    options.controlPath = parser.value(QStringLiteral("control"));
    if (options.controlPath.isEmpty())
        options.controlPath = defaultControlPath(options.instance);
    const bool needsRuntime
        = parser.value(QStringLiteral("root")).isEmpty() || parser.value(QStringLiteral("control")).isEmpty();
    if (needsRuntime && runtime.isEmpty())
        return failure(QStringLiteral("no usable XDG_RUNTIME_DIR; pass --root and --control"));
    options.recordFile = parser.value(QStringLiteral("record"));
    options.isQuiet = parser.isSet(QStringLiteral("quiet"));
    options.startsEjected = parser.isSet(QStringLiteral("ejected"));
    bool isNumber = false;
    options.seed = parser.value(QStringLiteral("seed")).toULongLong(&isNumber);
    if (!isNumber)
        return failure(QStringLiteral("\"%1\" is not a seed").arg(parser.value(QStringLiteral("seed"))));
    return { options, {}, false };
}
