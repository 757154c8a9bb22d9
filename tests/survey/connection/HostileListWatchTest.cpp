// The connection watch with invalid lists.

#include "survey/connection/ConnectionTasks.h"
#include "survey/connection/ProfileData.h"
#include "tests/survey/IdleList.h"
#include "tests/survey/SurveyFixture.h"

namespace {

class HostileListWatchTest : public SurveyFixture {
protected:
    HostileListWatchTest() { letLinkBeUp(associated); }

    static void haveList(std::uint32_t count, const std::vector<EntryBuilder>& entries)
    {
        std::vector<Bytes> all;
        for (const EntryBuilder& entry : entries)
            all.push_back(entry.bytes());
        plantBssidList(bssidList(count, all));
    }

    void probe() { ProbeConnectStatus(state, adapter, list); }

    static void expectFoundAt(int row)
    {
        EXPECT_EQ(G_bCurSelItem, row);
        EXPECT_EQ(G_bRescan, 0);
        EXPECT_EQ(TaskQueue::GetTaskObject(), nullptr);
    }

    static void expectNotFound()
    {
        EXPECT_EQ(G_bCurSelItem, -1);
        EXPECT_EQ(G_bRescan, 1);
        ASSERT_EQ(ProfileDataQueue->size(), 1U);
        EXPECT_EQ(TaskQueue::GetTaskObject()->getTaskType(), CONNECT_TASK_RESCAN);
    }

    static constexpr MacAddress associated { 0x00, 0x11, 0x22, 0x33, 0x44, 0x09 };
    ConnectionState state;
    IdleList list;
};

EntryBuilder withLength(EntryBuilder entry, std::uint32_t length)
{
    entry.keepLengths = true;
    entry.fixedPart.Length = length;
    return entry;
}

TEST_F(HostileListWatchTest, MaximumCountFindsThePresentEntries)
{
    haveList(0xFFFFFFFF, { EntryBuilder("a", 1), EntryBuilder("b", 9) });
    probe();
    expectFoundAt(1);
}

TEST_F(HostileListWatchTest, MaximumCountEndsWithThePresentEntries)
{
    haveList(0xFFFFFFFF, { EntryBuilder("a", 1), EntryBuilder("b", 2) });
    probe();
    expectNotFound();
}

TEST_F(HostileListWatchTest, CountOfZeroHidesTheEntries)
{
    haveList(0, { EntryBuilder("b", 9) });
    probe();
    expectNotFound();
}

TEST_F(HostileListWatchTest, ZeroLengthEndsTheWalk)
{
    haveList(2, { withLength(EntryBuilder("a", 1), 0), EntryBuilder("b", 9) });
    probe();
    expectNotFound();
}

TEST_F(HostileListWatchTest, LengthBeyondTheBufferEndsTheWalk)
{
    for (const std::uint32_t length : { 65536U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU }) {
        SCOPED_TRACE(length);
        ProfileDataQueue->clear();
        haveList(3, { EntryBuilder("a", 1), withLength(EntryBuilder("b", 2), length), EntryBuilder("c", 9) });
        probe();
        expectNotFound();
    }
}

TEST_F(HostileListWatchTest, LengthUpToTheEndOfTheBufferIsTheLastEntry)
{
    haveList(2, { withLength(EntryBuilder("b", 9), 65536 - 4), EntryBuilder("c", 1) });
    probe();
    expectFoundAt(0);
}

TEST_F(HostileListWatchTest, WatchIgnoresInformationElements)
{
    EntryBuilder entry("b", 9);
    entry.keepLengths = true;
    entry.fixedPart.Length = sizeof(WLAN_BSSID_EX);
    entry.fixedPart.IELength = 0xFFFFFFFF;
    haveList(2, { EntryBuilder("a", 1), entry });
    probe();
    expectFoundAt(1);
}

TEST_F(HostileListWatchTest, MissingListRequestsAScan)
{
    probe();
    expectNotFound();
}

} // namespace
