#pragma once

#include "tests/profiles/automatic/UtilityRun.h"

#include <gtest/gtest.h>

// The utility with its card found and its pages filled.
class AutomaticConnectionFixture : public testing::Test, protected SimulatedMachine, protected UtilityRun {
protected:
    AutomaticConnectionFixture()
        : UtilityRun(static_cast<SimulatedMachine&>(*this))
    {
        tick(2);
    }

    // Pulls the card, notices it, and puts it back; what is sent from then on is recorded.
    void reinsert()
    {
        eject();
        tick(2);
        EXPECT_EQ(G_bDeviceExist, 0);
        startRecording();
        insert();
    }
};
