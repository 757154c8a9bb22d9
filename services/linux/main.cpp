#include "services/host/TerminationSignals.h"
#include "services/linux/ServiceOptions.h"
#include "services/linux/service/CardWatch.h"
#include "services/linux/service/LinuxSystem.h"
#include "services/linux/service/SystemManagers.h"
#include "services/linux/supplicant/ChildLimits.h"
#include "services/linux/supplicant/SocketDirectory.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDir>

#include <chrono>
#include <cstdio>

#include <grp.h>
#include <syslog.h>
#include <unistd.h>

namespace {

enum ExitCode {
    Ended = 0,
    Failed = 1,
    Usage = 2,
};

// Members of this group may use the machine's network devices.
constexpr const char* clientGroup = "netdev";

std::int64_t steadyMs()
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

void logToStandardError(const std::string& text)
{
    (void)std::fprintf(stderr, "pellvaned: %s\n", text.c_str());
}

void logToSystem(const std::string& text)
{
    ::syslog(LOG_NOTICE, "%s", text.c_str());
}

// The machine's registry is open to everyone, its sockets to the group. Without root it is the user's own.
ServiceAccess accessForClients(const CardWatch::Log& log)
{
    if (::geteuid() != 0)
        return {};
    ServiceAccess access { 0755, mode_t { 0660 }, std::nullopt };
    if (const group* const entry = ::getgrnam(clientGroup))
        access.socketGroup = entry->gr_gid;
    else
        log(std::string("there is no group ") + clientGroup + ": only root can connect");
    return access;
}

// A connection that failed is made anew: the bus may be started after the service.
QDBusConnection systemBus()
{
    const QString name = QStringLiteral("pellvaned");
    QDBusConnection bus(name);
    if (!bus.isConnected()) {
        QDBusConnection::disconnectFromBus(name);
        bus = QDBusConnection::connectToBus(QDBusConnection::SystemBus, name);
    }
    return bus;
}

} // namespace

int main(int argumentCount, char** arguments)
{
    protectOwnMemory();
    QStringList texts;
    for (int i = 0; i < argumentCount; ++i)
        texts.append(QString::fromLocal8Bit(arguments[i]));
    const ServiceCommandLine commandLine = readServiceArguments(texts);
    if (!commandLine.options) {
        (void)std::fputs(commandLine.text.toLocal8Bit().constData(), commandLine.isError ? stderr : stdout);
        return commandLine.isError ? Usage : Ended;
    }
    ServiceOptions options = *commandLine.options;
    // A daemon's current directory is /.
    options.root = QDir::current().absoluteFilePath(options.root);
    // Before Qt: its event loop does not survive a fork.
    if (!options.isForeground && ::daemon(0, 0) != 0) {
        std::perror("pellvaned");
        return Failed;
    }
    if (!options.isForeground)
        ::openlog("pellvaned", LOG_PID, LOG_DAEMON);
    const CardWatch::Log log = options.isForeground ? logToStandardError : logToSystem;

    const QCoreApplication application(argumentCount, arguments);
    const TerminationSignals signals([] { QCoreApplication::quit(); });
    removeStaleSocketDirectories();
    SystemManagers managers(systemBus, "/run/wpa_supplicant");
    LinuxSystem system(log);
    CardWatch watch({ options.root.toStdString(), options.interfaceName.toStdString(), accessForClients(log) }, system,
        managers, steadyMs, log);
    watch.start();
    log("started");
    return QCoreApplication::exec();
}
