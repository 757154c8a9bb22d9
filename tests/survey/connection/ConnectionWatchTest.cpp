#include "survey/connection/ConnectionTasks.h"
#include "survey/connection/ProfileData.h"
#include "tests/survey/SurveyFixture.h"

namespace {

// Records the calls to the list with the current mark.
class RecordingList final : public SurveyList {
public:
    void RefreshAPList() override { calls.emplace_back("refresh"); }
    void reloadData() override { calls.push_back("reload with mark " + std::to_string(G_bCurSelItem)); }
    std::vector<std::string> calls;
};

using Calls = std::vector<std::string>;
using Oids = std::vector<std::uint32_t>;

class ConnectionWatchTest : public SurveyFixture {
protected:
    void probe() { ProbeConnectStatus(state, adapter, list); }

    ConnectionState state;
    RecordingList list;
};

constexpr MacAddress second { 0x00, 0x11, 0x22, 0x33, 0x44, 0x02 };

Oids operator+(Oids first, const Oids& more)
{
    first.insert(first.end(), more.begin(), more.end());
    return first;
}

TEST_F(ConnectionWatchTest, DoesNothingWithoutACard)
{
    G_bDeviceExist = 0;
    G_bRescan = 1;
    probe();
    EXPECT_TRUE(requests().empty());
    EXPECT_TRUE(list.calls.empty());
    EXPECT_EQ(G_bRescan, 1);
}

TEST_F(ConnectionWatchTest, ShowsANewListBeforeQueryingTheDriver)
{
    letLinkBeDown();
    G_bRescan = 1;
    G_bCurSelItem = 4;
    probe();
    EXPECT_EQ(list.calls, (Calls { "refresh", "reload with mark 4", "reload with mark -1" }));
    EXPECT_EQ(G_bRescan, 0);
    EXPECT_EQ(G_bCurSelItem, -1);
    EXPECT_EQ(registry.oids(), Oids { OID_GEN_MEDIA_CONNECT_STATUS });
}

TEST_F(ConnectionWatchTest, MarksTheRowOfTheAssociatedAccessPoint)
{
    haveList({ EntryBuilder("a", 1), EntryBuilder("b", 2), EntryBuilder("again", 2) });
    letLinkBeUp(second);
    probe();
    EXPECT_EQ(G_bCurSelItem, 1);
    EXPECT_EQ(G_bRescan, 0);
    EXPECT_EQ(state.TimerCount, -1);
    EXPECT_EQ(list.calls.back(), "reload with mark 1");
    EXPECT_EQ(registry.oids(), (Oids { OID_GEN_MEDIA_CONNECT_STATUS, OID_802_11_BSSID, OID_802_11_SSID }));
    EXPECT_TRUE(ProfileDataQueue->empty());
}

TEST_F(ConnectionWatchTest, RequestsAScanIfTheAccessPointIsNotInTheList)
{
    haveList({ EntryBuilder("a", 1) });
    letLinkBeUp(second);
    probe();
    EXPECT_EQ(G_bCurSelItem, -1);
    EXPECT_EQ(G_bRescan, 1);
    ASSERT_EQ(ProfileDataQueue->size(), 1U);
    EXPECT_EQ(TaskQueue::GetTaskObject()->getTaskType(), CONNECT_TASK_RESCAN);
    EXPECT_TRUE(clock.delays.empty()) << "the scan is left to the next task";
}

TEST_F(ConnectionWatchTest, RequestsNoScanWhileATaskRuns)
{
    letLinkBeUp(second);
    state.runFlag = 1;
    probe();
    EXPECT_EQ(G_bRescan, 1);
    EXPECT_TRUE(ProfileDataQueue->empty());
}

TEST_F(ConnectionWatchTest, DoesNotScanBeforeTheFirstLink)
{
    letLinkBeDown();
    probe();
    probe();
    EXPECT_EQ(registry.oids(), (Oids { OID_GEN_MEDIA_CONNECT_STATUS, OID_GEN_MEDIA_CONNECT_STATUS }));
    EXPECT_EQ(state.TimerCount, 0);
}

TEST_F(ConnectionWatchTest, ScansAtEveryProbeAfterLinkLoss)
{
    haveList({ EntryBuilder("b", 2) });
    letLinkBeUp(second);
    probe();
    registry.forgetCalls();
    letLinkBeDown();
    letScanFind({ EntryBuilder("b", 2) });
    probe();
    EXPECT_EQ(registry.oids(), Oids { OID_GEN_MEDIA_CONNECT_STATUS } + scanOids());
    EXPECT_EQ(state.TimerCount, -1);
    EXPECT_EQ(state.runFlag, 0);
    EXPECT_TRUE(ProfileDataQueue->empty());
    EXPECT_EQ(G_bRescan, 1);
    list.calls.clear();
    registry.forgetCalls();
    probe();
    EXPECT_EQ(list.calls.front(), "refresh");
    EXPECT_EQ(registry.oids(), Oids { OID_GEN_MEDIA_CONNECT_STATUS } + scanOids());
}

TEST_F(ConnectionWatchTest, TreatsARadioThatIsOffAsLinkLoss)
{
    letLinkBeUp(second);
    letScanFind({});
    G_bRadio = 0;
    state.TimerCount = -1;
    probe();
    EXPECT_EQ(registry.oids(), Oids { OID_GEN_MEDIA_CONNECT_STATUS } + scanOids());
}

TEST_F(ConnectionWatchTest, RunsAnOlderTaskFirstAfterLinkLoss)
{
    letLinkBeDown();
    state.TimerCount = -1;
    queueConnection(std::make_unique<PROFILE_DATA>());
    probe();
    EXPECT_EQ(ProfileDataQueue->size(), 1U);
    EXPECT_EQ(TaskQueue::GetTaskObject()->getTaskType(), CONNECT_TASK_RESCAN);
    EXPECT_TRUE(clock.delays.empty());
}

TEST_F(ConnectionWatchTest, TreatsAFailedQueryAsConnected)
{
    // The buffer of a failed query is zero, which means connected.
    registry.otherwise.succeeds = false;
    probe();
    EXPECT_EQ(state.TimerCount, -1);
}

TEST_F(ConnectionWatchTest, MarksTheRowModulo256AsASignedByte)
{
    const auto markFor = [this](int index) {
        std::vector<EntryBuilder> entries;
        for (int row = 0; row < index; ++row) {
            entries.emplace_back("n", static_cast<std::uint8_t>(row));
            entries.back().fixedPart.MacAddress[4] = 0x50;
        }
        entries.emplace_back("b", 2);
        haveList(entries);
        letLinkBeUp(second);
        probe();
        return static_cast<int>(G_bCurSelItem);
    };
    EXPECT_EQ(markFor(127), 127);
    EXPECT_EQ(markFor(128), -128);
    EXPECT_EQ(markFor(200), 200 - 256);
    EXPECT_EQ(markFor(255), -1);
    EXPECT_EQ(markFor(256), 0);
}

} // namespace
