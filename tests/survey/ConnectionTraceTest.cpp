// The lines on standard error about connections, to the letter.

#include "survey/ConnectionTasks.h"
#include "survey/NetworkSecurity.h"
#include "survey/ProfileData.h"
#include "tests/survey/SurveyFixture.h"

#include <functional>
#include <sstream>
#include <string>

namespace {

using Lines = std::vector<std::string>;

class IdleList final : public SurveyList {
public:
    void RefreshAPList() override { }
    void reloadData() override { }
};

class ConnectionTraceTest : public SurveyFixture {
protected:
    ~ConnectionTraceTest() override { __DEBUG__ = 0; }

    // What the site survey writes; the adapter and the records have lines of their own.
    static Lines written(const std::function<void()>& action)
    {
        testing::internal::CaptureStderr();
        action();
        std::istringstream text(testing::internal::GetCapturedStderr());
        Lines lines;
        for (std::string line; std::getline(text, line);) {
            if (line.find("SiteSurveyPageController") != std::string::npos)
                lines.push_back(line);
        }
        return lines;
    }

    Lines ofTask(std::int32_t type)
    {
        std::shared_ptr<ProfileData> task = ProfileData::setProfileData(std::make_unique<PROFILE_DATA>());
        task->Profile()->NetworkType = Ndis802_11Infrastructure;
        task->setTaskType(type);
        TaskQueue::InsertTaskObject(std::move(task));
        return written([this] { DoTask(state, adapter); });
    }

    Lines ofProbe()
    {
        return written([this] { ProbeConnectStatus(state, adapter, list); });
    }

    static Lines ofClass(int cipher, int authentication, std::int32_t mode = Ndis802_11Infrastructure)
    {
        EntryBuilder entry;
        entry.fixedPart.InfrastructureMode = mode;
        entry.elements = wpaElement(cipher, authentication);
        return ofEntry(entry);
    }

    static Lines ofEntry(const EntryBuilder& entry)
    {
        return written([&entry] {
            Bytes bytes = bssidList({ entry });
            (void)wpaClassOf(*BssidListWalk(bytes).next());
        });
    }

    ConnectionState state;
    IdleList list;
};

TEST_F(ConnectionTraceTest, TaskTypesAreToldWithoutTheFlag)
{
    EXPECT_EQ(ofTask(1),
        (Lines { "#### SiteSurveyPageController - DoTask - taskType = 1 ####",
            "#### SiteSurveyPageController - Probe - 1 ####" }));
    EXPECT_EQ(ofTask(2),
        (Lines { "#### SiteSurveyPageController - DoTask - taskType = 2 ####",
            "#### SiteSurveyPageController - Probe - 2 ####" }));
    EXPECT_EQ(ofTask(3),
        (Lines { "#### SiteSurveyPageController - DoTask - taskType = 3 ####",
            "#### SiteSurveyPageController - Probe - 3 ####" }));
    EXPECT_EQ(ofTask(4),
        (Lines { "#### SiteSurveyPageController - DoTask - taskType = 4 ####",
            "#### SiteSurveyPageController - Probe - 4 ####" }));
    EXPECT_EQ(ofTask(5), (Lines { "#### SiteSurveyPageController - DoTask - taskType = 5 ####" }));
}

TEST_F(ConnectionTraceTest, BeginningAndEndOfATaskAreToldWithTheFlag)
{
    __DEBUG__ = 1;
    EXPECT_EQ(ofTask(3),
        (Lines { "#### SiteSurveyPageController - DoTask ####",
            "#### SiteSurveyPageController - DoTask - taskType = 3 ####",
            "#### SiteSurveyPageController - Probe - 3 ####",
            "#### SiteSurveyPageController - DoTask - ending ####" }));
    EXPECT_EQ(written([this] { DoTask(state, adapter); }),
        (Lines {
            "#### SiteSurveyPageController - DoTask ####", "#### SiteSurveyPageController - DoTask - ending ####" }));
}

TEST_F(ConnectionTraceTest, TaskThatIsHeldUpOrHasNoRecordHasNoEnd)
{
    __DEBUG__ = 1;
    state.runFlag = 1;
    EXPECT_EQ(ofTask(2), (Lines { "#### SiteSurveyPageController - DoTask ####" }));
    state.runFlag = 0;
    TaskQueue::GetTaskObject()->setProfile(nullptr);
    EXPECT_EQ(written([this] { DoTask(state, adapter); }),
        (Lines { "#### SiteSurveyPageController - DoTask ####",
            "#### SiteSurveyPageController - DoTask - taskType = 2 ####" }));
}

TEST_F(ConnectionTraceTest, ProbeIsToldWithTheFlagEvenWithoutACard)
{
    EXPECT_EQ(ofProbe(), Lines {});
    __DEBUG__ = 1;
    EXPECT_EQ(ofProbe(), (Lines { "#### SiteSurveyPageController - ProbeConnectStatus ####" }));
    G_bDeviceExist = 0;
    EXPECT_EQ(ofProbe(), (Lines { "#### SiteSurveyPageController - ProbeConnectStatus ####" }));
}

TEST_F(ConnectionTraceTest, ClassIsToldWithTheFlagAlone)
{
    EXPECT_EQ(ofClass(2, 2), Lines {});
    __DEBUG__ = 1;
    // The two lines about what was found keep their two blanks.
    EXPECT_EQ(ofClass(2, 2),
        (Lines { "#### SiteSurveyPageController - IsItemWPA ####",
            "**** SiteSurveyPageController -  RefreshAPList --> strEncryption = TKIP ****",
            "**** SiteSurveyPageController -  RefreshAPList --> strAuthentication = WPA-PSK ****" }));
    EXPECT_EQ(ofClass(3, 1),
        (Lines { "#### SiteSurveyPageController - IsItemWPA ####",
            "**** SiteSurveyPageController -  RefreshAPList --> strEncryption = AES-WRAP ****",
            "**** SiteSurveyPageController -  RefreshAPList --> strAuthentication = WPA ****" }));
    EXPECT_EQ(ofClass(4, 0, Ndis802_11IBSS),
        (Lines { "#### SiteSurveyPageController - IsItemWPA ####",
            "**** SiteSurveyPageController -  RefreshAPList --> strEncryption = AES-CCMP ****",
            "**** SiteSurveyPageController -  RefreshAPList --> strAuthentication = WPA-NONE ****" }));
}

TEST_F(ConnectionTraceTest, WhatIsNotFoundIsNotTold)
{
    __DEBUG__ = 1;
    EXPECT_EQ(ofEntry(EntryBuilder()), (Lines { "#### SiteSurveyPageController - IsItemWPA ####" }));
    EXPECT_EQ(ofClass(9, 9), (Lines { "#### SiteSurveyPageController - IsItemWPA ####" }));
}

} // namespace
