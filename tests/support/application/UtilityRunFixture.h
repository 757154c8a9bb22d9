#pragma once

#include "tests/support/application/UtilityRun.h"

#include <gtest/gtest.h>

// The utility after it has found the card and filled its pages.
class UtilityRunFixture : public testing::Test, protected SimulatedMachine, protected UtilityRun {
protected:
    UtilityRunFixture()
        : UtilityRun(static_cast<SimulatedMachine&>(*this))
    {
        tick(2);
    }

    // Removes the card, lets the utility notice, and inserts it again. Starts the recording before the insertion.
    void reinsert()
    {
        eject();
        tick(2);
        EXPECT_EQ(G_bDeviceExist, 0);
        startRecording();
        insert();
    }
};
