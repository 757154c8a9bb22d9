#include "survey/connection/ProfileData.h"
#include "survey/connection/TaskQueue.h"
#include "tests/support/NameIn.h"
#include "tests/support/application/UtilityRun.h"

#include <memory>

// The utility is restarted: it continues with the active profile.

namespace {

using Ssids = std::vector<QString>;

class NewStartTest : public testing::Test, protected SimulatedMachine {
protected:
    NewStartTest()
    {
        run->tick(2);
        run->addManually(u"Harbour Cafe"_qs);
        run->addManually(u"Anchor"_qs, u"anchor and chain"_qs);
        run->doubleClickProfile(1);
        run->tick(UtilityRun::ticksToSettle);
        EXPECT_EQ(run->connectedTo(), u"Anchor"_qs);
        EXPECT_EQ(run->mark(), u"1 CHECKMRK"_qs);
    }

    // Restarts the utility on the same files, with a card that has lost its connection.
    void restart()
    {
        run.reset();
        moveHome();
        eject();
        insert();
        startRecording();
        run = newRun();
        ASSERT_EQ(ProfileDataQueue->size(), 0u);
        ASSERT_EQ(run->mark(), QString());
    }

    [[nodiscard]] std::unique_ptr<UtilityRun> newRun()
    {
        return std::make_unique<UtilityRun>(static_cast<SimulatedMachine&>(*this));
    }

    std::unique_ptr<UtilityRun> run { newRun() };
};

TEST_F(NewStartTest, QueuesTheActiveProfileAndMarksItsRowOnceTheCardIsFound)
{
    restart();
    EXPECT_EQ(G_configFromProfile, 0);
    run->tick();
    ASSERT_EQ(G_bDeviceExist, 1);
    EXPECT_EQ(run->table->numberOfRows(), 2);
    EXPECT_TRUE(run->mark().startsWith(u"1 ")) << "checked or not";
    EXPECT_EQ(G_configFromProfile, 1);
    ASSERT_EQ(ProfileDataQueue->size(), 1u);
    EXPECT_EQ(TaskQueue::GetTaskObject()->getTaskType(), CONNECT_TASK_FULL);
    EXPECT_EQ(nameIn(TaskQueue::GetTaskObject()->Profile()->Ssid), "Anchor");

    run->tick(UtilityRun::ticksToSettle);
    EXPECT_EQ(ssidsSet(), Ssids { u"Anchor"_qs });
    EXPECT_EQ(run->connectedTo(), u"Anchor"_qs);
    EXPECT_EQ(run->mark(), u"1 CHECKMRK"_qs);
}

TEST_F(NewStartTest, AppliesTheActivatedCopyNotTheEditedProfile)
{
    run->sheets.users.emplace_back([](QDialog& editor) {
        typeSsid(editor, u"Compass"_qs);
        pressOk(editor);
    });
    run->table->selectRowNumber(1);
    press(run->profiles, u"Edit"_qs);
    restart();
    ASSERT_EQ(run->store.loadRecords()[1].text(ProfileKey::ssid), u"Compass"_qs);
    run->tick(UtilityRun::ticksToSettle);
    EXPECT_EQ(ssidsSet(), Ssids { u"Anchor"_qs });
    EXPECT_EQ(run->connectedTo(), u"Anchor"_qs);
}

TEST_F(NewStartTest, QueuesNothingAfterAManualConnection)
{
    run->connectTo("Harbour Cafe");
    run->tick(UtilityRun::ticksToSettle);
    ASSERT_EQ(run->connectedTo(), u"Harbour Cafe"_qs);
    restart();
    run->tick();
    ASSERT_EQ(G_bDeviceExist, 1);
    EXPECT_EQ(run->setting()->front().text(ProfileKey::activeProfileFlag), u"NO"_qs);
    EXPECT_EQ(ProfileDataQueue->size(), 0u);
    run->tick(UtilityRun::ticksToSettle);
    EXPECT_EQ(ssidsSet(), Ssids {});
    EXPECT_EQ(run->connectedTo(), QString());
    EXPECT_EQ(run->mark(), QString());
    EXPECT_EQ(G_configFromProfile, 0);
}

} // namespace
