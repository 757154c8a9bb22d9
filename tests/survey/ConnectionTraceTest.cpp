// The exact lines on standard error about connections.

#include "survey/NetworkSecurity.h"
#include "survey/connection/ConnectionTasks.h"
#include "survey/connection/ProfileData.h"
#include "tests/support/StandardErrorOf.h"
#include "tests/survey/IdleList.h"
#include "tests/survey/SurveyFixture.h"

#include <functional>
#include <string>

namespace {

class ConnectionTraceTest : public SurveyFixture {
protected:
    // The lines of the site survey, without those of the adapter and the records.
    static std::string written(const std::function<void()>& action)
    {
        return linesOf("SiteSurveyPageController", standardErrorOf(action));
    }

    std::string ofTask(std::int32_t type)
    {
        std::shared_ptr<ProfileData> task = ProfileData::setProfileData(std::make_unique<PROFILE_DATA>());
        task->Profile()->NetworkType = Ndis802_11Infrastructure;
        task->setTaskType(type);
        TaskQueue::InsertTaskObject(std::move(task));
        return written([this] { DoTask(state, adapter); });
    }

    std::string ofProbe()
    {
        return written([this] { ProbeConnectStatus(state, adapter, list); });
    }

    static std::string ofClass(int cipher, int authentication, std::int32_t mode = Ndis802_11Infrastructure)
    {
        EntryBuilder entry;
        entry.fixedPart.InfrastructureMode = mode;
        entry.elements = wpaElement(cipher, authentication);
        return ofEntry(entry);
    }

    static std::string ofEntry(const EntryBuilder& entry)
    {
        return written([&entry] {
            Bytes bytes = bssidList({ entry });
            (void)IsItemWPA(*BssidListWalk(bytes).next());
        });
    }

    ConnectionState state;
    IdleList list;
};

TEST_F(ConnectionTraceTest, TaskTypesAreAlwaysTraced)
{
    EXPECT_EQ(ofTask(1),
        "#### SiteSurveyPageController - DoTask - taskType = 1 ####\n"
        "#### SiteSurveyPageController - Probe - 1 ####\n");
    EXPECT_EQ(ofTask(2),
        "#### SiteSurveyPageController - DoTask - taskType = 2 ####\n"
        "#### SiteSurveyPageController - Probe - 2 ####\n");
    EXPECT_EQ(ofTask(3),
        "#### SiteSurveyPageController - DoTask - taskType = 3 ####\n"
        "#### SiteSurveyPageController - Probe - 3 ####\n");
    EXPECT_EQ(ofTask(4),
        "#### SiteSurveyPageController - DoTask - taskType = 4 ####\n"
        "#### SiteSurveyPageController - Probe - 4 ####\n");
    EXPECT_EQ(ofTask(5), "#### SiteSurveyPageController - DoTask - taskType = 5 ####\n");
}

TEST_F(ConnectionTraceTest, StartAndEndOfATaskAreTracedWithTheDebugFlag)
{
    __DEBUG__ = 1;
    EXPECT_EQ(ofTask(3),
        "#### SiteSurveyPageController - DoTask ####\n"
        "#### SiteSurveyPageController - DoTask - taskType = 3 ####\n"
        "#### SiteSurveyPageController - Probe - 3 ####\n"
        "#### SiteSurveyPageController - DoTask - ending ####\n");
    EXPECT_EQ(written([this] { DoTask(state, adapter); }),
        "#### SiteSurveyPageController - DoTask ####\n"
        "#### SiteSurveyPageController - DoTask - ending ####\n");
}

TEST_F(ConnectionTraceTest, BlockedTaskOrTaskWithoutARecordHasNoEndTrace)
{
    __DEBUG__ = 1;
    state.runFlag = 1;
    EXPECT_EQ(ofTask(2), "#### SiteSurveyPageController - DoTask ####\n");
    state.runFlag = 0;
    TaskQueue::GetTaskObject()->setProfile(nullptr);
    EXPECT_EQ(written([this] { DoTask(state, adapter); }),
        "#### SiteSurveyPageController - DoTask ####\n"
        "#### SiteSurveyPageController - DoTask - taskType = 2 ####\n");
}

TEST_F(ConnectionTraceTest, ProbeIsTracedWithTheDebugFlagEvenWithoutACard)
{
    EXPECT_EQ(ofProbe(), "");
    __DEBUG__ = 1;
    EXPECT_EQ(ofProbe(), "#### SiteSurveyPageController - ProbeConnectStatus ####\n");
    G_bDeviceExist = 0;
    EXPECT_EQ(ofProbe(), "#### SiteSurveyPageController - ProbeConnectStatus ####\n");
}

TEST_F(ConnectionTraceTest, WpaClassIsTracedOnlyWithTheDebugFlag)
{
    EXPECT_EQ(ofClass(2, 2), "");
    __DEBUG__ = 1;
    // These two lines contain two spaces.
    EXPECT_EQ(ofClass(2, 2),
        "#### SiteSurveyPageController - IsItemWPA ####\n"
        "**** SiteSurveyPageController -  RefreshAPList --> strEncryption = TKIP ****\n"
        "**** SiteSurveyPageController -  RefreshAPList --> strAuthentication = WPA-PSK ****\n");
    EXPECT_EQ(ofClass(3, 1),
        "#### SiteSurveyPageController - IsItemWPA ####\n"
        "**** SiteSurveyPageController -  RefreshAPList --> strEncryption = AES-WRAP ****\n"
        "**** SiteSurveyPageController -  RefreshAPList --> strAuthentication = WPA ****\n");
    EXPECT_EQ(ofClass(4, 0, Ndis802_11IBSS),
        "#### SiteSurveyPageController - IsItemWPA ####\n"
        "**** SiteSurveyPageController -  RefreshAPList --> strEncryption = AES-CCMP ****\n"
        "**** SiteSurveyPageController -  RefreshAPList --> strAuthentication = WPA-NONE ****\n");
}

TEST_F(ConnectionTraceTest, MissingSuitesAreNotTraced)
{
    __DEBUG__ = 1;
    EXPECT_EQ(ofEntry(EntryBuilder()), "#### SiteSurveyPageController - IsItemWPA ####\n");
    EXPECT_EQ(ofClass(9, 9), "#### SiteSurveyPageController - IsItemWPA ####\n");
}

} // namespace
