#pragma once

#include "advanced/ui/AdvancePageController.h"
#include "app/QvConfig7100Controller.h"
#include "app/shared/SharedState.h"
#include "driver/VX7100Access.h"
#include "monitor/ui/LinkStatusPageController.h"
#include "platform/SocketIORegistry.h"
#include "platform/ui/TableView.h"
#include "profiles/ProfileStore.h"
#include "profiles/ui/ProfilePageController.h"
#include "survey/ui/SiteSurveyPageController.h"
#include "tests/profiles/automatic/EditorHands.h"
#include "tests/profiles/automatic/RecordedFile.h"
#include "tests/support/ManualRunLoop.h"
#include "tests/support/MemoryUserDefaults.h"
#include "tests/support/RecordingAlertPanels.h"
#include "tests/support/RecordingAssertionHandler.h"
#include "tests/support/RecordingTickClock.h"
#include "tests/support/ScriptedModalSheets.h"
#include "tests/support/SimulatorThread.h"

#include <QTabWidget>
#include <QTemporaryDir>
#include <gtest/gtest.h>

// The device watch and its pages as the application wires them, over a home of their own and a card that can be pulled.
class AutomaticConnectionFixture : public testing::Test {
protected:
    static constexpr int ticksToSettle = 6;

    AutomaticConnectionFixture();

    ~AutomaticConnectionFixture() override;
    AutomaticConnectionFixture(const AutomaticConnectionFixture&) = delete;
    AutomaticConnectionFixture& operator=(const AutomaticConnectionFixture&) = delete;
    AutomaticConnectionFixture(AutomaticConnectionFixture&&) = delete;
    AutomaticConnectionFixture& operator=(AutomaticConnectionFixture&&) = delete;

    static void forgetSharedState();

    void tick(int count = 1);

    void eject()
    {
        simulator.run([this] { simulator.service().eject(); });
    }
    void insert()
    {
        simulator.run([this] { ASSERT_TRUE(simulator.service().insert()); });
    }
    // Pulls the card, notices it, and puts it back; what is sent from then on is recorded.
    void reinsert();

    void startRecording()
    {
        simulator.run([this] { ASSERT_TRUE(simulator.service().recorder().start(recording.toStdString())); });
    }

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
    [[nodiscard]] std::vector<QString> namesSet() const { return namesSetIn(recordedIn(recording)); }

    QTemporaryDir home;
    QString recording { home.filePath(u"requests"_qs) };
    SimulatorThread simulator;
    RecordingTickClock clock;
    RecordingAlertPanels alerts;
    RecordingAssertionHandler assertions;
    ManualRunLoop runLoop;
    ScriptedModalSheets sheets;
    QTabWidget tabView;
    MemoryUserDefaults prefs;
    SocketIORegistry registry { { simulator.root() } };
    VX7100Access adapter { registry, clock, alerts };
    SiteSurveyPageController survey { adapter, runLoop, assertions, alerts, sheets };
    ProfileStore store { prefs, home.filePath(u"Library/Preferences/Profile.plist"_qs) };
    ProfilePageController profiles { runLoop, alerts, sheets, store, survey };
    LinkStatusPageController linkStatus { adapter, runLoop, assertions, &survey };
    AdvancePageController advanced { adapter, alerts, assertions, home.path() };
    QvConfig7100Controller controller { adapter, runLoop, tabView,
        { .siteSurvey = &survey, .about = nullptr, .profile = &profiles, .advance = &advanced } };
    TableView* table { profiles.findChild<TableView*>(u"profileList"_qs) };
};
