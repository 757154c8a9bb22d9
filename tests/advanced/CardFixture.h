#pragma once

#include "driver/VX7100Access.h"
#include "driver/records/NdisRecords.h"
#include "driver/records/VxRecords.h"
#include "tests/support/InitialSharedState.h"
#include "tests/support/RecordedRequests.h"
#include "tests/support/RecordingAlertPanels.h"
#include "tests/support/RecordingAssertionHandler.h"
#include "tests/support/RecordingTickClock.h"
#include "tests/support/StandardErrorOf.h"

#include <gtest/gtest.h>

// An adapter over a recording registry, and the shared flags as they are at start.
class CardFixture : public testing::Test {
protected:
    void letDriverHaveMode(std::int32_t mode) { registry.answer(0x0D71010C, bytesOfRecord(mode)); }
    void letDriverHave(const VX_802_11_STA_CONFIG& configuration)
    {
        registry.answer(0x0D710111, bytesOfRecord(configuration));
    }

    [[nodiscard]] std::vector<RecordedRequest> requests() const { return recordedRequests(registry); }

    InitialSharedState initialState;
    RecordingIORegistry registry;
    RecordingTickClock clock;
    RecordingAlertPanels alerts;
    RecordingAssertionHandler assertions;
    VX7100Access adapter { registry, clock, alerts };
};

using Requests = std::vector<RecordedRequest>;

// The rates that "Auto" stands for.
inline constexpr NDIS_802_11_RATES mixedAutoRates { 108, 96, 72, 48, 22, 11, 4, 2 };
inline constexpr NDIS_802_11_RATES cckAutoRates { 22, 11, 4, 2, 0, 0, 0, 0 };
inline constexpr NDIS_802_11_RATES ofdmAutoRates { 108, 96, 72, 48, 36, 24, 18, 12 };
