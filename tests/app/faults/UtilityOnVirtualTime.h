#pragma once

#include "app/Application.h"
#include "platform/TickClock.h"
#include "platform/store/WindowSettings.h"
#include "services/simulator/scenario/Scenario.h"
#include "tests/app/faults/FaultyCardRegistry.h"
#include "tests/support/ManualRunLoop.h"
#include "tests/support/MemoryUserDefaults.h"
#include "tests/support/RecordingAlertPanels.h"
#include "tests/support/RecordingAssertionHandler.h"
#include "tests/support/ScriptedModalSheets.h"
#include "tests/support/application/UserActions.h"
#include "tests/survey/InitialSurveyState.h"

#include <QStringList>
#include <QTemporaryDir>

// Waits by advancing the virtual time.
class VirtualClock final : public TickClock {
public:
    explicit VirtualClock(VirtualTime& time)
        : m_time(time)
    {
    }
    void Delay(std::uint32_t numTicks) override { m_time.nowMs += numTicks * 1000 / ticksPerSecond; }
    [[nodiscard]] std::chrono::nanoseconds elapsed() const override { return std::chrono::milliseconds(m_time.nowMs); }

private:
    VirtualTime& m_time;
};

// The complete application on a simulated card in the same process. Before its start.
class UtilityOnVirtualTime {
    Q_DISABLE_COPY_MOVE(UtilityOnVirtualTime)

public:
    // Few networks take less time; all of them need several chunks of the list.
    enum class Networks { Few, All };

    explicit UtilityOnVirtualTime(Networks networks = Networks::Few);
    ~UtilityOnVirtualTime() = default;

    void awakeFromNib() { application.awakeFromNib(); }
    // Lets 2 s pass, count times.
    void tick(int count = 1);

    // Selects the network and presses Connect; keys are typed into the sheets that open.
    void connectTo(const std::string& ssid);
    void addProfile(const std::string& ssid);
    void activateFirstProfile();
    // Joins the network unless the card is connected to it.
    void ensureLinkTo(const std::string& ssid);

    [[nodiscard]] const ScenarioNetwork& network(const std::string& ssid) const;
    [[nodiscard]] const CardState& cardState() { return card.stateAt(time.nowMs); }
    [[nodiscard]] QString text(const char* label) const;
    template <typename Widget> [[nodiscard]] Widget& control(const char* name) const
    {
        return *application.window().findChild<Widget*>(QLatin1String(name));
    }

    // What the window shows, what is stored, and what the card is set to, except for values that depend on the time.
    [[nodiscard]] QStringList snapshot();
    // What depends on the time, too.
    [[nodiscard]] QStringList smoothedFigures() const;

private:
    [[nodiscard]] static QString temporaryTemplate();

    InitialSurveyState m_initialState;
    QTemporaryDir m_home { temporaryTemplate() };
    WindowSettings m_settings { m_home.filePath(u"window.plist"_qs) };

public:
    VirtualTime time;
    Scenario scenario;
    SimulatedCard card;
    FaultyCardRegistry registry { card, time };
    VirtualClock clock { time };
    RecordingAlertPanels alerts;
    RecordingAssertionHandler assertions;
    ScriptedModalSheets sheets;
    ManualRunLoop runLoop;
    MemoryUserDefaults userDefaults;
    mutable Application application;
    SiteSurveyPageController& survey { *application.window().findChild<SiteSurveyPageController*>() };
    ProfilePageController& profiles { *application.window().findChild<ProfilePageController*>() };
};
