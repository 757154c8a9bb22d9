#pragma once

#include "app/Application.h"
#include "platform/store/WindowSettings.h"
#include "platform/ui/WindowTickClock.h"
#include "tests/support/ManualRunLoop.h"
#include "tests/support/MemoryUserDefaults.h"
#include "tests/support/RecordedRequests.h"
#include "tests/support/RecordingAlertPanels.h"
#include "tests/support/RecordingAssertionHandler.h"
#include "tests/support/RecordingTickClock.h"
#include "tests/support/ScriptedModalSheets.h"
#include "tests/survey/InitialSurveyState.h"

#include <QTabWidget>
#include <QTemporaryDir>
#include <gtest/gtest.h>

// The application with a recording driver, before it has started.
class ApplicationFixture : public testing::Test {
protected:
    void tick() { runLoop.advance(std::chrono::seconds(2)); }

    InitialSurveyState initialState;
    QTemporaryDir home;
    WindowSettings settings { home.filePath(u"window.plist"_qs) };
    RecordingIORegistry registry;
    RecordingTickClock sleeper;
    WindowTickClock clock { sleeper };
    RecordingAlertPanels alerts;
    RecordingAssertionHandler assertions;
    ScriptedModalSheets sheets;
    ManualRunLoop runLoop;
    MemoryUserDefaults userDefaults;
    Application application { { registry, clock, runLoop, alerts, sheets, assertions, userDefaults, settings,
        home.path(), home.path() } };
};
