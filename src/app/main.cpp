#include "app/Application.h"
#include "app/CoreDumps.h"
#include "app/SingleInstance.h"
#include "app/shared/Identity.h"
#include "app/shared/StandardStreams.h"
#include "platform/LogindConsoleUser.h"
#include "platform/StandardAssertionHandler.h"
#include "platform/SystemTickClock.h"
#include "platform/registry/SocketIORegistry.h"
#include "platform/store/SettingsUserDefaults.h"
#include "platform/store/WindowSettings.h"
#include "platform/ui/Images.h"
#include "platform/ui/QtAlertPanels.h"
#include "platform/ui/QtModalSheets.h"
#include "platform/ui/QtRunLoop.h"
#include "platform/ui/WindowTickClock.h"

#include <QApplication>
#include <QDBusConnection>

namespace {

// At a login screen there is no display to open a window on, so this runs without one.
void waitUntilUserLogsIn(int argc, char** argv)
{
    const QCoreApplication application(argc, argv); // D-Bus needs one
    const QString busName = QStringLiteral("consoleUser");
    {
        LogindConsoleUser consoleUser(QDBusConnection::connectToBus(QDBusConnection::SystemBus, busName));
        SystemTickClock clock;
        waitForConsoleUser(consoleUser, clock);
    }
    QDBusConnection::disconnectFromBus(busName);
}

void setApplicationIdentity()
{
    QApplication::setApplicationName(QLatin1String(Identity::applicationName));
    QApplication::setApplicationDisplayName(QLatin1String(Identity::applicationName));
    QApplication::setOrganizationName(QLatin1String(Identity::organisationName));
    QApplication::setApplicationVersion(QLatin1String(Identity::version));
    QApplication::setDesktopFileName(QLatin1String(Identity::applicationId));
    QApplication::setWindowIcon(applicationIcon());
}

// Windows of one user on different displays are independent of each other.
QByteArray displayName()
{
    return qgetenv("QT_QPA_PLATFORM") + ' ' + qgetenv("WAYLAND_DISPLAY") + ' ' + qgetenv("DISPLAY");
}

// From the program that starts this one, for the window that shall appear. Wayland's token comes first, because some
// desktops set both.
QByteArray activationToken()
{
    const QByteArray token = qgetenv("XDG_ACTIVATION_TOKEN");
    return token.isEmpty() ? qgetenv("DESKTOP_STARTUP_ID") : token;
}

} // namespace

int main(int argc, char** argv)
{
    prepareStandardStreams();
    disableCoreDumps();
    waitUntilUserLogsIn(argc, argv);
    SingleInstance instance(qEnvironmentVariable("XDG_RUNTIME_DIR").toStdString(), displayName());
    if (!instance.isFirst(activationToken()))
        return 0;
    const QApplication framework(argc, argv);
    setApplicationIdentity();

    WindowSettings settings;
    SettingsUserDefaults userDefaults;
    SocketIORegistry registry(defaultRegistryRoots());
    SystemTickClock sleeper;
    WindowTickClock clock(sleeper);
    QtRunLoop runLoop;
    QtAlertPanels alerts;
    QtModalSheets sheets;
    StandardAssertionHandler assertions;

    Application application({ registry, clock, runLoop, alerts, sheets, assertions, userDefaults, settings });
    application.awakeFromNib();
    const ActivationListener listener(
        instance, [&application](const QByteArray& token) { application.window().bringToFront(token); });
    return QApplication::exec();
}
