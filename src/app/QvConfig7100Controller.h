#pragma once

#include <QtGlobal>

#include <memory>

class AboutPage;
class AdvancePage;
class ProfilePage;
class QObject;
class QTabWidget;
class RunLoop;
class SiteSurveyPage;
class Timer;
class VX7100Access;

// The pages that the device watch updates; null for an absent page.
struct WatchedPages {
    SiteSurveyPage* siteSurvey { nullptr };
    AboutPage* about { nullptr };
    ProfilePage* profile { nullptr };
    AdvancePage* advance { nullptr };
};

// The application controller: checks for the card every 2.0 s and updates the pages when it comes or goes.
class QvConfig7100Controller {
    Q_DISABLE_COPY_MOVE(QvConfig7100Controller)

public:
    QvConfig7100Controller(VX7100Access& adapter, RunLoop& runLoop, QTabWidget& tabView, const WatchedPages& pages);
    ~QvConfig7100Controller();

    // Shows the third tab and starts the device watch, whose first tick looks for the card.
    void awakeFromNib();
    void OnTimer();
    // True when the driver's service can be found and opened.
    [[nodiscard]] bool IsDeviceDriverExist();

private:
    void reapplyProfileOnRequest();
    void initialiseCard();

    VX7100Access& Adapter;
    [[maybe_unused]] QObject* EnvSetting { nullptr }; // an outlet of the window layout that no code uses
    QTabWidget& TabView;
    WatchedPages m_pages;
    RunLoop& m_runLoop;
    std::unique_ptr<Timer> m_watchTimer;
};
