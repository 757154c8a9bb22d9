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

#include <string>
#include <vector>

// An adapter with a recording registry and the initial shared flags.
class CardFixture : public testing::Test {
protected:
    void setDriverMode(std::int32_t mode) { registry.answer(VX_OID_802_11_PHY_MODE, bytesOfRecord(mode)); }
    void setDriverConfiguration(const VX_802_11_STA_CONFIG& configuration)
    {
        registry.answer(VX_OID_802_11_STA_CONFIG, bytesOfRecord(configuration));
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

// The trace that Apply always writes.
inline std::string modeTrace(int selectedMode, int driverMode, int modeForDriver)
{
    return "#### AdvancePageController - OnApply -  nWirelessMode = " + std::to_string(selectedMode)
        + ", enumWirelessMode = " + std::to_string(driverMode)
        + ",  G_enumWirelessMode = " + std::to_string(modeForDriver) + " ####\n";
}

// The rates that "Auto" sends.
inline constexpr NDIS_802_11_RATES mixedAutoRates { 108, 96, 72, 48, 22, 11, 4, 2 };
inline constexpr NDIS_802_11_RATES cckAutoRates { 22, 11, 4, 2, 0, 0, 0, 0 };
inline constexpr NDIS_802_11_RATES ofdmAutoRates { 108, 96, 72, 48, 36, 24, 18, 12 };
