// The task queue and the connection watch together.

#include "survey/connection/ConnectionTasks.h"
#include "survey/connection/ProfileData.h"
#include "tests/support/RecordedRequests.h"
#include "tests/survey/IdleList.h"
#include "tests/survey/SurveyFixture.h"

namespace {

class LinkLossTest : public SurveyFixture {
protected:
    void probe() { ProbeConnectStatus(state, adapter, list); }
    void doTask() { DoTask(state, adapter); }

    static void queueWithoutRecord()
    {
        std::shared_ptr<ProfileData> task = ProfileData::setProfileData(nullptr);
        task->setTaskType(CONNECT_TASK_FULL);
        TaskQueue::InsertTaskObject(std::move(task));
    }

    [[nodiscard]] int scans() const { return static_cast<int>(registry.inputsOf(scanOids().front()).size()); }

    ConnectionState state;
    IdleList list;
};

TEST_F(LinkLossTest, TasksRunAgainOnceTheQueueWasEmpty)
{
    queueWithoutRecord();
    doTask();
    EXPECT_EQ(state.runFlag, 1);
    EXPECT_TRUE(ProfileDataQueue->empty());

    doTask();
    EXPECT_EQ(state.runFlag, 0);
    EXPECT_TRUE(registry.oids().empty());

    (void)queueConnection(std::make_unique<PROFILE_DATA>());
    doTask();
    EXPECT_EQ(registry.oids().back(), asSet(OID_802_11_SSID));
    EXPECT_TRUE(ProfileDataQueue->empty());
    EXPECT_EQ(state.runFlag, 0);
}

TEST_F(LinkLossTest, TaskAfterOneWithoutARecordNeverRuns)
{
    queueWithoutRecord();
    (void)queueConnection(std::make_unique<PROFILE_DATA>());
    for (int call = 0; call < 4; ++call)
        doTask();
    EXPECT_TRUE(registry.oids().empty());
    EXPECT_EQ(ProfileDataQueue->size(), 1U);
    EXPECT_EQ(state.runFlag, 1);
}

TEST_F(LinkLossTest, EachProbeQueuesAScanWhileATaskRuns)
{
    letLinkBeDown();
    state.TimerCount = -1;
    state.runFlag = 1;
    for (std::size_t probes = 1; probes <= 3; ++probes) {
        probe();
        EXPECT_EQ(ProfileDataQueue->size(), probes);
        EXPECT_EQ(TaskQueue::GetTaskObject()->getTaskType(), CONNECT_TASK_RESCAN);
    }
    EXPECT_EQ(scans(), 0);
    EXPECT_EQ(state.runFlag, 1);
    EXPECT_EQ(state.TimerCount, -1);

    state.runFlag = 0; // the other task has ended
    letScanFind({});
    probe(); // queues another task and runs the oldest
    EXPECT_EQ(ProfileDataQueue->size(), 3U);
    EXPECT_EQ(scans(), 1);
}

TEST_F(LinkLossTest, TasksAndProbesDoNotChangeSetSsidAndSetBssid)
{
    state.SetSsid = 1;
    state.SetBssid = 1;
    state.SsidSet.SsidLength = 4;
    state.BssidSet = { 1, 2, 3, 4, 5, 6 };
    for (const bool up : { true, false }) {
        up ? letLinkBeUp({}) : letLinkBeDown();
        probe();
        (void)queueConnection(std::make_unique<PROFILE_DATA>());
        doTask();
        doTask();
    }
    EXPECT_EQ(state.SetSsid, 1);
    EXPECT_EQ(state.SetBssid, 1);
    EXPECT_EQ(std::uint32_t { state.SsidSet.SsidLength }, 4U);
    EXPECT_EQ(state.BssidSet, (MacAddress { 1, 2, 3, 4, 5, 6 }));
}

} // namespace
