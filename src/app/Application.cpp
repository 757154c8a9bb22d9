#include "app/Application.h"

#include "about/MakerUrl.h"
#include "platform/store/PropertyListFile.h"

Application::Application(const Platform& platform)
    : m_adapter(platform.registry, platform.clock, platform.alerts)
    , m_window(platform.settings)
    , m_siteSurvey(m_adapter, platform.runLoop, platform.assertions, platform.alerts, platform.sheets)
    , m_profileStore(platform.userDefaults, preferencesFile(QStringLiteral("Profile.plist"), platform.homePath),
          &m_window.saveReport())
    , m_profiles(m_adapter, platform.runLoop, platform.alerts, platform.sheets, m_profileStore, m_siteSurvey)
    , m_linkStatus(m_adapter, platform.runLoop, platform.assertions, &m_siteSurvey)
    , m_statistics(m_adapter, platform.runLoop)
    , m_advanced(m_adapter, platform.alerts, platform.assertions, m_window.saveReport(), platform.homePath)
    , m_about(m_adapter, platform.alerts, makerUrl(platform.settings), openInBrowser, platform.bundleRoot)
    , m_controller(m_adapter, platform.runLoop, m_window.tabView(),
          { .siteSurvey = &m_siteSurvey, .about = &m_about, .profile = &m_profiles, .advance = &m_advanced })
{
    m_window.setPage(MainWindow::Page::SiteSurvey, &m_siteSurvey);
    m_window.setPage(MainWindow::Page::Profiles, &m_profiles);
    m_window.setPage(MainWindow::Page::LinkStatus, &m_linkStatus);
    m_window.setPage(MainWindow::Page::Statistics, &m_statistics);
    m_window.setPage(MainWindow::Page::AdvancedSettings, &m_advanced);
    m_window.setPage(MainWindow::Page::About, &m_about);
    m_siteSurvey.keepSortOrderIn(platform.settings);
    m_siteSurvey.setProfilePage(&m_profiles);
    m_siteSurvey.setProfileEditor(&m_profiles.profileEditor());
}

Application::~Application() = default;

void Application::awakeFromNib()
{
    // The device watch is scheduled first, so that its tick initialises a new card before any page's
    // timer queries it.
    m_controller.awakeFromNib();
    m_siteSurvey.awakeFromNib();
    m_profiles.awakeFromNib();
    m_linkStatus.awakeFromNib();
    m_statistics.awakeFromNib();
    m_advanced.awakeFromNib();
    m_about.awakeFromNib();
    m_window.show();
}
