#include "services/linux/ServiceOptions.h"

#include <QCommandLineParser>

namespace {

ServiceCommandLine failure(const QString& error)
{
    return { std::nullopt, QStringLiteral("pellvaned: %1 (see --help)\n").arg(error), true };
}

// The kernel's rule for names of interfaces; the name becomes the last component of two paths.
bool isInterfaceName(const QString& name)
{
    constexpr int maxBytes = 15;
    return !name.isEmpty() && name.toUtf8().size() <= maxBytes && name != QLatin1String(".")
        && name != QLatin1String("..") && !name.contains(QLatin1Char('/')) && !name.contains(QLatin1Char(' '));
}

void describe(QCommandLineParser& parser)
{
    parser.setApplicationDescription(
        QStringLiteral("Publishes wireless interfaces as driver services, so that Vantrel can use them.\n"
                       "Needs root, or CAP_NET_ADMIN. Ends on SIGTERM and SIGINT."));
    parser.addOptions({
        { QStringLiteral("interface"),
            QStringLiteral("Publish only this interface, now or when it appears (default: every wireless interface)."),
            QStringLiteral("NAME") },
        { QStringLiteral("root"), QStringLiteral("Registry to publish in (default: /run/io-registry)."),
            QStringLiteral("DIR"), QStringLiteral("/run/io-registry") },
        { QStringLiteral("foreground"),
            QStringLiteral("Stay in the foreground and log to standard error (default: become a daemon and log to the "
                           "system log).") },
    });
}

} // namespace

ServiceCommandLine readServiceArguments(const QStringList& arguments)
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
        return { std::nullopt, QStringLiteral("pellvaned " PELLVANED_VERSION "\n"), false };
    if (!parser.positionalArguments().isEmpty())
        return failure(QStringLiteral("unexpected argument \"%1\"").arg(parser.positionalArguments().constFirst()));

    ServiceOptions options;
    options.interfaceName = parser.value(QStringLiteral("interface"));
    if (parser.isSet(QStringLiteral("interface")) && !isInterfaceName(options.interfaceName))
        return failure(QStringLiteral("\"%1\" is not an interface name").arg(options.interfaceName));
    options.root = parser.value(QStringLiteral("root"));
    if (options.root.isEmpty())
        return failure(QStringLiteral("the registry has no name"));
    options.isForeground = parser.isSet(QStringLiteral("foreground"));
    return { options, {}, false };
}
