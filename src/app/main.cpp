#include "about/MakerUrl.h"
#include "about/ui/AboutPageController.h"
#include "advanced/ui/AdvancePageController.h"
#include "app/MainWindow.h"
#include "app/QvConfig7100Controller.h"
#include "app/shared/Identity.h"
#include "driver/VX7100Access.h"
#include "monitor/ui/LinkStatusPageController.h"
#include "monitor/ui/StatisticsPageController.h"
#include "platform/LogindConsoleUser.h"
#include "platform/StandardAssertionHandler.h"
#include "platform/SystemTickClock.h"
#include "platform/registry/SocketIORegistry.h"
#include "platform/store/SettingsUserDefaults.h"
#include "platform/ui/Images.h"
#include "platform/ui/QtAlertPanels.h"
#include "platform/ui/QtModalSheets.h"
#include "platform/ui/QtRunLoop.h"
#include "platform/ui/WindowTickClock.h"
#include "profiles/ProfileStore.h"
#include "profiles/ui/ProfilePageController.h"
#include "survey/ui/SiteSurveyPageController.h"

#include <QApplication>
#include <QCoreApplication>
#include <QDBusConnection>
#include <QSettings>

namespace {

// The windows come only when somebody is there to see them: at a login window there is no screen to open them on.
void waitForSomebody(int argc, char** argv)
{
    const QCoreApplication waiting(argc, argv); // the bus wants one
    const QString busName = QStringLiteral("consoleUser");
    {
        LogindConsoleUser consoleUser(QDBusConnection::connectToBus(QDBusConnection::SystemBus, busName));
        SystemTickClock clock;
        waitForConsoleUser(consoleUser, clock);
    }
    QDBusConnection::disconnectFromBus(busName);
}

void introduceApplication()
{
    QApplication::setApplicationName(QLatin1String(Identity::applicationName));
    QApplication::setApplicationDisplayName(QLatin1String(Identity::applicationName));
    QApplication::setOrganizationName(QLatin1String(Identity::organisationName));
    QApplication::setApplicationVersion(QLatin1String(Identity::version));
    QApplication::setDesktopFileName(QLatin1String(Identity::applicationId));
    QApplication::setWindowIcon(applicationIcon());
}

// What the window layout loads: everything that lives as long as the window.
class Application {
public:
    Application()
    {
        m_window.setPage(MainWindow::Page::SiteSurvey, &m_siteSurvey);
        m_window.setPage(MainWindow::Page::Profiles, &m_profiles);
        m_window.setPage(MainWindow::Page::LinkStatus, &m_linkStatus);
        m_window.setPage(MainWindow::Page::Statistics, &m_statistics);
        m_window.setPage(MainWindow::Page::AdvancedSettings, &m_advanced);
        m_window.setPage(MainWindow::Page::About, &m_about);
        m_siteSurvey.setProfilePage(&m_profiles);
        m_siteSurvey.setProfileEditor(&m_profiles.profileEditor());
    }

    // The watch comes first: its tick brings a card into use before the tick of any page asks for it.
    void awakeFromNib()
    {
        m_controller.awakeFromNib();
        m_siteSurvey.awakeFromNib();
        m_profiles.awakeFromNib();
        m_linkStatus.awakeFromNib();
        m_statistics.awakeFromNib();
        m_advanced.awakeFromNib();
        m_about.awakeFromNib();
        m_window.show();
    }

private:
    QSettings m_defaults { QSettings::IniFormat, QSettings::UserScope, QLatin1String(Identity::organisationName),
        QLatin1String(Identity::applicationId) };
    QtRunLoop m_runLoop;
    SystemTickClock m_sleeper;
    WindowTickClock m_clock { m_sleeper };
    QtAlertPanels m_alerts;
    QtModalSheets m_sheets;
    StandardAssertionHandler m_assertions;
    SocketIORegistry m_registry { defaultRegistryRoots() };
    VX7100Access m_adapter { m_registry, m_clock, m_alerts };
    MainWindow m_window { m_defaults };
    SiteSurveyPageController m_siteSurvey { m_adapter, m_runLoop, m_assertions, m_alerts, m_sheets };
    SettingsUserDefaults m_prefs;
    ProfileStore m_profileStore { m_prefs };
    ProfilePageController m_profiles { m_runLoop, m_alerts, m_sheets, m_profileStore, m_siteSurvey };
    LinkStatusPageController m_linkStatus { m_adapter, m_runLoop, m_assertions, &m_siteSurvey };
    StatisticsPageController m_statistics { m_adapter, m_runLoop };
    AdvancePageController m_advanced { m_adapter, m_alerts, m_assertions };
    AboutPageController m_about { m_adapter, makerUrl(m_defaults) };
    QvConfig7100Controller m_controller { m_adapter, m_runLoop, m_window.tabView(),
        { .siteSurvey = &m_siteSurvey, .about = &m_about, .profile = &m_profiles, .advance = &m_advanced } };
};

} // namespace

int main(int argc, char** argv)
{
    waitForSomebody(argc, argv);
    const QApplication framework(argc, argv);
    introduceApplication();
    Application application;
    application.awakeFromNib();
    return QApplication::exec();
}
