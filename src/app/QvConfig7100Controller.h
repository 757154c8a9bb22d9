#pragma once

#include <memory>

class AboutPage;
class AdvancePage;
class ProfilePage;
class QTabWidget;
class RunLoop;
class SiteSurveyPage;
class Timer;
class VX7100Access;

// The pages that the device watch drives; the calls of a page that is absent are skipped.
struct WatchedPages {
    SiteSurveyPage* siteSurvey { nullptr };
    AboutPage* about { nullptr };
    ProfilePage* profile { nullptr };
    AdvancePage* advance { nullptr };
};

// The application controller: watches for the card every 2.0 s and keeps the pages in step with it.
class QvConfig7100Controller {
public:
    QvConfig7100Controller(VX7100Access& adapter, RunLoop& runLoop, QTabWidget& tabView, const WatchedPages& pages);
    ~QvConfig7100Controller();
    QvConfig7100Controller(const QvConfig7100Controller&) = delete;
    QvConfig7100Controller& operator=(const QvConfig7100Controller&) = delete;

    // Shows the third tab and starts the watch. The card is looked for by its first tick.
    void awakeFromNib();
    void OnTimer();
    // Whether the driver's service can be found and opened.
    [[nodiscard]] bool IsDeviceDriverExist();

private:
    void reapplyProfileWhenAsked();
    void bringCardIntoUse();

    VX7100Access& Adapter;
    RunLoop& m_runLoop;
    QTabWidget& TabView;
    WatchedPages m_pages;
    std::unique_ptr<Timer> m_watchTimer;
};
