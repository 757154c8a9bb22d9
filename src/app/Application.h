#pragma once

#include "about/ui/AboutPageController.h"
#include "advanced/ui/AdvancePageController.h"
#include "app/MainWindow.h"
#include "app/QvConfig7100Controller.h"
#include "driver/VX7100Access.h"
#include "monitor/ui/LinkStatusPageController.h"
#include "monitor/ui/StatisticsPageController.h"
#include "profiles/ProfileStore.h"
#include "profiles/ui/ProfilePageController.h"
#include "survey/ui/SiteSurveyPageController.h"

#include <QDir>
#include <QString>

class AlertPanels;
class AssertionHandler;
class IORegistry;
class ModalSheets;
class RunLoop;
class TickClock;
class UserDefaults;
class WindowSettings;

// The operating system as the application sees it. Everything referred to outlives the application.
struct Platform {
    IORegistry& registry;
    TickClock& clock;
    RunLoop& runLoop;
    AlertPanels& alerts;
    ModalSheets& sheets;
    AssertionHandler& assertions;
    UserDefaults& userDefaults; // the profiles
    WindowSettings& settings; // the window's placement, the sort order of the networks and the maker's web site
    QString homePath { QDir::homePath() }; // holds Library/Preferences
    QString bundleRoot {}; // prepended to the fixed paths of the installed bundles
};

// The main window with its pages and the objects they share, connected to each other.
class Application {
    Q_DISABLE_COPY_MOVE(Application)

public:
    explicit Application(const Platform& platform);
    ~Application();

    // Starts the device watch and the pages, and shows the window.
    void awakeFromNib();

    [[nodiscard]] MainWindow& window() { return m_window; }
    [[nodiscard]] VX7100Access& adapter() { return m_adapter; }

private:
    VX7100Access m_adapter;
    MainWindow m_window;
    SiteSurveyPageController m_siteSurvey;
    ProfileStore m_profileStore;
    ProfilePageController m_profiles;
    LinkStatusPageController m_linkStatus;
    StatisticsPageController m_statistics;
    AdvancePageController m_advanced;
    AboutPageController m_about;
    QvConfig7100Controller m_controller;
};
