#pragma once

#include "app/Application.h"
#include "app/shared/SharedState.h"
#include "platform/registry/SocketIORegistry.h"
#include "platform/store/SettingsUserDefaults.h"
#include "platform/store/WindowSettings.h"
#include "platform/ui/TableView.h"
#include "tests/support/ManualRunLoop.h"
#include "tests/support/RecordingAlertPanels.h"
#include "tests/support/RecordingAssertionHandler.h"
#include "tests/support/RecordingTickClock.h"
#include "tests/support/ScriptedModalSheets.h"
#include "tests/support/application/SimulatedMachine.h"
#include "tests/support/application/UserActions.h"
#include "tests/survey/InitialSurveyState.h"

// One run of the application on the machine's home directory and card, before its first tick.
class UtilityRun {
public:
    static constexpr int ticksToSettle = 6;

    explicit UtilityRun(SimulatedMachine& machine, std::chrono::milliseconds requestTimeout = std::chrono::seconds(2));

    // Lets 2 s pass, count times.
    void tick(int count = 1);

    // Adds a profile in the profile editor: WPA-PSK with TKIP, or open without a passphrase.
    void addManually(const QString& ssid, const QString& passphrase = QString());
    void doubleClickProfile(int row);
    void deleteProfile(int row);

    [[nodiscard]] const ScenarioNetwork& network(const std::string& ssid) const;
    // Selects the network's row on the site survey page.
    void select(const ScenarioNetwork& network);
    void select(const std::string& ssid) { select(network(ssid)); }
    // Selects the network and presses Connect.
    void connectTo(const ScenarioNetwork& network);
    void connectTo(const std::string& ssid) { connectTo(network(ssid)); }

    [[nodiscard]] bool linkIsUp();
    // The SSID of the link; empty without one.
    [[nodiscard]] QString connectedTo();

    // The rows with an image and its name: "2 CHECKMRK"; empty if no row has one.
    [[nodiscard]] QString mark() const;

    [[nodiscard]] std::optional<ProfileList> setting() const { return prefs.arrayForKey(u"Profile Setting"_qs); }

private:
    InitialSurveyState m_initialState;
    SimulatedMachine& m_machine;
    WindowSettings m_settings;

public:
    RecordingTickClock clock;
    RecordingAlertPanels alerts;
    RecordingAssertionHandler assertions;
    ManualRunLoop runLoop;
    ScriptedModalSheets sheets;
    SettingsUserDefaults prefs;
    SocketIORegistry registry;
    ProfileStore store; // reads what the application stores
    Application application;
    SiteSurveyPageController& survey { *application.window().findChild<SiteSurveyPageController*>() };
    ProfilePageController& profiles { *application.window().findChild<ProfilePageController*>() };
    TableView* table { profiles.findChild<TableView*>(u"profileList"_qs) };
};
