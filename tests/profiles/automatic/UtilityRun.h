#pragma once

#include "advanced/ui/AdvancePageController.h"
#include "app/QvConfig7100Controller.h"
#include "app/shared/SharedState.h"
#include "driver/VX7100Access.h"
#include "monitor/ui/LinkStatusPageController.h"
#include "platform/registry/SocketIORegistry.h"
#include "platform/store/SettingsUserDefaults.h"
#include "platform/ui/TableView.h"
#include "profiles/ProfileStore.h"
#include "profiles/ui/ProfilePageController.h"
#include "survey/ui/SiteSurveyPageController.h"
#include "tests/profiles/automatic/EditorHands.h"
#include "tests/profiles/automatic/SimulatedMachine.h"
#include "tests/support/ManualRunLoop.h"
#include "tests/support/RecordingAlertPanels.h"
#include "tests/support/RecordingAssertionHandler.h"
#include "tests/support/RecordingTickClock.h"
#include "tests/support/ScriptedModalSheets.h"
#include "tests/survey/InitialSurveyState.h"

#include <QTabWidget>

// One run of the utility: the device watch and its pages as the application wires them, over the machine's files and
// its card. Begins before the first tick, with what the process shares as a start leaves it.
class UtilityRun {
public:
    static constexpr int ticksToSettle = 6;

    explicit UtilityRun(SimulatedMachine& machine);

    void tick(int count = 1);

    // A profile typed in the sheet of the profile page: WPA-PSK with TKIP, or open without a passphrase.
    void addByHand(const QString& ssid, const QString& passphrase = QString());

    void selectInSurvey(const std::string& ssid);

    void doubleClickProfile(int row);

    void deleteProfile(int row)
    {
        table->selectRowNumber(row);
        press(profiles, u"Delete"_qs);
    }

    // What the card is connected to; empty without a link.
    [[nodiscard]] QString connectedTo();

    // The row with an image, and which: "2 CHECKMRK"; empty where no row has one.
    [[nodiscard]] QString mark() const;

    [[nodiscard]] std::optional<ProfileList> setting() const { return prefs.arrayForKey(u"Profile Setting"_qs); }

private:
    InitialSurveyState m_initialState;
    SimulatedMachine& m_machine;

public:
    RecordingTickClock clock;
    RecordingAlertPanels alerts;
    RecordingAssertionHandler assertions;
    ManualRunLoop runLoop;
    ScriptedModalSheets sheets;
    QTabWidget tabView;
    SettingsUserDefaults prefs;
    SocketIORegistry registry;
    VX7100Access adapter { registry, clock, alerts };
    SiteSurveyPageController survey { adapter, runLoop, assertions, alerts, sheets };
    ProfileStore store;
    ProfilePageController profiles { runLoop, alerts, sheets, store, survey };
    LinkStatusPageController linkStatus { adapter, runLoop, assertions, &survey };
    AdvancePageController advanced;
    QvConfig7100Controller controller { adapter, runLoop, tabView,
        { .siteSurvey = &survey, .about = nullptr, .profile = &profiles, .advance = &advanced } };
    TableView* table { profiles.findChild<TableView*>(u"profileList"_qs) };
};
