#pragma once

#include "app/shared/Pages.h"
#include "driver/VX7100Access.h"
#include "tests/support/InitialSharedState.h"
#include "tests/support/ManualRunLoop.h"
#include "tests/support/RecordedRequests.h"
#include "tests/support/RecordingAlertPanels.h"
#include "tests/support/RecordingAssertionHandler.h"
#include "tests/support/RecordingTickClock.h"

#include <QStringList>

#include <chrono>
#include <vector>

using Requests = std::vector<RecordedRequest>;

inline constexpr std::chrono::milliseconds monitorInterval { 2000 };

// A card in use, with everything else that a page needs. Tests set the records that it answers.
struct MonitoredCard {
    InitialSharedState initialState;
    RecordingIORegistry registry;
    RecordingTickClock clock;
    RecordingAlertPanels alerts;
    VX7100Access adapter { registry, clock, alerts };
    ManualRunLoop runLoop;
    RecordingAssertionHandler assertions;

    MonitoredCard() { G_bDeviceExist = 1; }

    template <typename Record> void answer(std::uint32_t oid, const Record& record)
    {
        registry.answer(oid, bytesOfRecord(record));
    }

    void tick() { runLoop.advance(monitorInterval); }

    // The requests since the last call.
    [[nodiscard]] Requests takeRequests()
    {
        auto requests = recordedRequests(registry);
        registry.forgetCalls();
        return requests;
    }
};

class RecordingSiteSurveyPage final : public SiteSurveyPage {
public:
    QStringList texts;

    void ClearAPList() override { }
    void RefreshAPList() override { }
    void StartSiteSurveyTimer() override { }
    void StopSiteSurveyTimer() override { }
    void UpdateConnectStatus(const QString& text) override { texts << text; }
};
