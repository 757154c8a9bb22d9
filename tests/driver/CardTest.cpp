#include "app/shared/SharedState.h"
#include "driver/BssidList.h"
#include "driver/VX7100Access.h"
#include "tests/support/BssidListBuilder.h"
#include "tests/support/InitialSharedState.h"
#include "tests/support/RecordedRequests.h"
#include "tests/support/RecordingAlertPanels.h"
#include "tests/support/RecordingTickClock.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

// A set sent through the query operation.
const RecordedRequest scanRequest = query(asSet(OID_802_11_BSSID_LIST_SCAN), 4);

class CardTest : public testing::Test {
protected:
    InitialSharedState initialState;
    RecordingIORegistry registry;
    RecordingTickClock clock;
    RecordingAlertPanels alerts;
    VX7100Access adapter { registry, clock, alerts };

    static std::vector<std::uint8_t> listed()
    {
        std::vector<std::uint8_t> result;
        BssidListWalk walk(currentBssidList());
        while (const auto entry = walk.next())
            result.push_back(entry->fixedPart().MacAddress[5]);
        return result;
    }

    static Bytes chunk(std::uint8_t first, std::uint8_t count)
    {
        std::vector<EntryBuilder> entries;
        for (std::uint8_t number = first; number < first + count; ++number)
            entries.emplace_back("net", number);
        return bssidList(entries);
    }

    void continueWith(const Bytes& bytes) { registry.answerOnce(VX_OID_802_11_BSSID_LIST_NEXT, { .bytes = bytes }); }
};

TEST_F(CardTest, InitialisationQueriesTheCardScansAndReadsTheList)
{
    registry.answer(OID_802_11_BSSID_LIST, chunk(1, 2));
    registry.answer(OID_802_11_NETWORK_TYPES_SUPPORTED, bytesOf({ 2, 0, 0, 0, 1, 0, 0, 0, 3, 0, 0, 0 }));
    std::vector<std::uint8_t> dialogRunning;
    registry.onCall = [&](const RecordedRegistryCall& call) {
        if (call.call == RegistryCall::IOConnectMethodStructureIStructureO)
            dialogRunning.push_back(G_bDialogRunning);
    };
    EXPECT_TRUE(adapter.InitCard());
    EXPECT_EQ(recordedRequests(registry),
        (std::vector<RecordedRequest> { query(VX_OID_802_11_STA_CONFIG, 32),
            query(OID_802_11_NETWORK_TYPES_SUPPORTED, 20), scanRequest, query(OID_802_11_BSSID_LIST, 4096),
            query(VX_OID_802_11_BSSID_LIST_NEXT, 4096) }));
    EXPECT_EQ(dialogRunning, (std::vector<std::uint8_t> { 0, 1, 0, 0, 0 }));
    EXPECT_EQ(clock.delays, (std::vector<std::uint32_t> { 120 }));
    EXPECT_EQ(G_bRescan, 1);
    EXPECT_EQ(listed(), (std::vector<std::uint8_t> { 1, 2 }));
    EXPECT_TRUE(alerts.alerts.empty());
}

TEST_F(CardTest, EepromErrorEndsInitialisationWithAnAlert)
{
    Bytes configuration(32);
    configuration[28] = std::byte { 0x03 };
    registry.answer(VX_OID_802_11_STA_CONFIG, configuration);
    EXPECT_FALSE(adapter.InitCard());
    ASSERT_EQ(alerts.alerts.size(), 1u);
    EXPECT_EQ(alerts.alerts[0].title, u"EEPRON error!!"_qs);
    EXPECT_EQ(alerts.alerts[0].message, u"EEPROM Version error. Please update EEPROM contents."_qs);
    EXPECT_EQ(alerts.alerts[0].defaultButton, u"OK"_qs);
    EXPECT_EQ(registry.oids(), (std::vector<std::uint32_t> { VX_OID_802_11_STA_CONFIG }));
    EXPECT_EQ(G_bRescan, 0);
    EXPECT_EQ(G_pBssidList, nullptr);
}

TEST_F(CardTest, OtherErrorBitsAreIgnored)
{
    Bytes configuration(32);
    configuration[28] = std::byte { 0xFE };
    registry.answer(VX_OID_802_11_STA_CONFIG, configuration);
    EXPECT_TRUE(adapter.InitCard());
}

TEST_F(CardTest, SupportFor80211aIsSetAndNeverCleared)
{
    registry.answer(OID_802_11_NETWORK_TYPES_SUPPORTED, bytesOf({ 1, 0, 0, 0, 1, 0, 0, 0, 2, 0, 0, 0 }));
    adapter.CheckPhyMode();
    EXPECT_EQ(G_bSupportAMode, 0); // NumberOfItems excludes the second value
    registry.answer(OID_802_11_NETWORK_TYPES_SUPPORTED, bytesOf({ 2, 0, 0, 0, 1, 0, 0, 0, 2, 0, 0, 0 }));
    adapter.CheckPhyMode();
    EXPECT_EQ(G_bSupportAMode, 1);
    registry.fail(OID_802_11_NETWORK_TYPES_SUPPORTED);
    adapter.CheckPhyMode();
    EXPECT_EQ(G_bSupportAMode, 1);
}

TEST_F(CardTest, WrongCountOfNetworkTypesDoesNotReadPastTheBuffer)
{
    registry.answer(OID_802_11_NETWORK_TYPES_SUPPORTED,
        bytesOf({ 255, 255, 255, 255, 1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 3, 0, 0, 0 }));
    adapter.CheckPhyMode();
    EXPECT_EQ(G_bSupportAMode, 0);
}

TEST_F(CardTest, CheckCountryRegionAlwaysSucceedsWithoutARequest)
{
    EXPECT_TRUE(adapter.CheckCountryRegion());
    EXPECT_TRUE(registry.calls.empty());
}

TEST_F(CardTest, ScanIsSentAsAQueryWithTheSetFlagAndTakesTwoSeconds)
{
    adapter.RescanBssidList();
    EXPECT_EQ(recordedRequests(registry), std::vector { scanRequest });
    EXPECT_EQ(clock.delays, (std::vector<std::uint32_t> { 120 }));
}

TEST_F(CardTest, ListWithoutContinuationsIsTheFirstChunk)
{
    registry.answer(OID_802_11_BSSID_LIST, chunk(1, 4));
    adapter.QueryBssidList();
    EXPECT_EQ(listed(), (std::vector<std::uint8_t> { 1, 2, 3, 4 }));
    EXPECT_EQ(registry.oids().size(), 2u);
}

TEST_F(CardTest, ContinuationsAreAppendedInArrivalOrder)
{
    registry.answer(OID_802_11_BSSID_LIST, chunk(1, 4));
    continueWith(chunk(5, 3));
    continueWith(chunk(8, 2));
    adapter.QueryBssidList();
    EXPECT_EQ(bssidCount(currentBssidList()), 9u);
    EXPECT_EQ(listed(), (std::vector<std::uint8_t> { 1, 2, 3, 4, 5, 6, 7, 8, 9 }));
}

TEST_F(CardTest, EachQueryReplacesTheWholeList)
{
    registry.answer(OID_802_11_BSSID_LIST, chunk(1, 4));
    adapter.QueryBssidList();
    registry.answer(OID_802_11_BSSID_LIST, chunk(9, 1));
    adapter.QueryBssidList();
    EXPECT_EQ(listed(), (std::vector<std::uint8_t> { 9 }));
    EXPECT_EQ((*G_pBssidList)[4 + 128], std::byte { 0 });
}

TEST_F(CardTest, FailedListQueryGivesAnEmptyList)
{
    registry.fail(OID_802_11_BSSID_LIST);
    registry.fail(VX_OID_802_11_BSSID_LIST_NEXT);
    adapter.QueryBssidList();
    EXPECT_EQ(bssidCount(currentBssidList()), 0u);
    EXPECT_EQ(registry.oids().size(), 2u);
}

TEST_F(CardTest, CardRemovedBetweenContinuationsEndsTheList)
{
    registry.answer(OID_802_11_BSSID_LIST, chunk(1, 2));
    registry.answerWith(VX_OID_802_11_BSSID_LIST_NEXT, [this](auto) {
        registry.serviceCount = 0; // removed after this reply
        return RegistryAnswer { .bytes = chunk(3, 1) };
    });
    adapter.QueryBssidList();
    EXPECT_EQ(listed(), (std::vector<std::uint8_t> { 1, 2, 3 }));
    EXPECT_EQ(registry.oids().size(), 2u);
    EXPECT_TRUE(registry.held().empty());
}

TEST_F(CardTest, FullListEndsWithAWholeEntry)
{
    EntryBuilder large("net", 1);
    large.elements.resize(872); // an entry of 1000 bytes
    const Bytes fourEntries = bssidList({ large, large, large, large });
    registry.answer(OID_802_11_BSSID_LIST, fourEntries);
    registry.answer(VX_OID_802_11_BSSID_LIST_NEXT, fourEntries); // never ends
    adapter.QueryBssidList();
    EXPECT_EQ(listed().size(), 65u); // of 1000 bytes each, in 65,532 bytes
    EXPECT_EQ(bssidCount(currentBssidList()), 65u);
}

TEST_F(CardTest, NothingIsAppendedAfterAnEntryThatDidNotFit)
{
    EntryBuilder large("net", 1);
    large.elements.resize(3872); // an entry of 4000 bytes
    registry.answer(OID_802_11_BSSID_LIST, bssidList({ large }));
    for (int continuation = 0; continuation < 15; ++continuation)
        continueWith(bssidList({ large })); // 1,532 bytes remain
    continueWith(bssidList({ large }));
    continueWith(chunk(2, 1)); // would fit
    adapter.QueryBssidList();
    EXPECT_EQ(listed(), std::vector<std::uint8_t>(16, 1));
    EXPECT_EQ(registry.inputsOf(VX_OID_802_11_BSSID_LIST_NEXT).size(), 16u);
}

TEST_F(CardTest, EmptyContinuationDoesNotEndTheList)
{
    registry.answer(OID_802_11_BSSID_LIST, chunk(1, 1));
    for (std::uint8_t number = 2; number <= 3; ++number) {
        for (int empty = 0; empty < 7; ++empty)
            continueWith(chunk(0, 0));
        continueWith(chunk(number, 1));
    }
    adapter.QueryBssidList();
    EXPECT_EQ(listed(), (std::vector<std::uint8_t> { 1, 2, 3 }));
}

TEST_F(CardTest, ListOfASlowDriverEndsAfterFourSeconds)
{
    using namespace std::chrono_literals;
    registry.answer(OID_802_11_BSSID_LIST, chunk(1, 1));
    std::uint8_t number = 1;
    registry.answerWith(VX_OID_802_11_BSSID_LIST_NEXT, [&](auto) {
        clock.time += 1s;
        return RegistryAnswer { .bytes = chunk(++number, 1) };
    });
    adapter.QueryBssidList();
    EXPECT_EQ(listed(), (std::vector<std::uint8_t> { 1, 2, 3, 4, 5 }));
}

TEST_F(CardTest, QueryStopsAfterEightEmptyContinuations)
{
    registry.answer(OID_802_11_BSSID_LIST, chunk(1, 1));
    registry.answer(VX_OID_802_11_BSSID_LIST_NEXT, chunk(0, 0));
    adapter.QueryBssidList();
    EXPECT_EQ(registry.inputsOf(VX_OID_802_11_BSSID_LIST_NEXT).size(), 8u);
    EXPECT_EQ(listed(), (std::vector<std::uint8_t> { 1 }));
}

TEST_F(CardTest, QueryStopsAfterAsManyContinuationsAsAFullListCanHaveEntries)
{
    int continuations = 0;
    registry.answerWith(VX_OID_802_11_BSSID_LIST_NEXT,
        [&](auto) { return RegistryAnswer { .bytes = chunk(1, ++continuations % 8 == 0 ? 1 : 0) }; });
    adapter.QueryBssidList();
    EXPECT_EQ(continuations, 512);
    EXPECT_EQ(listed().size(), 64u);
}

TEST_F(CardTest, TooHighCountInTheFirstChunkHidesNothing)
{
    Bytes wrongCount = chunk(1, 2);
    std::fill_n(wrongCount.begin(), 4, std::byte { 0xFF });
    registry.answer(OID_802_11_BSSID_LIST, wrongCount);
    continueWith(chunk(3, 2));
    adapter.QueryBssidList();
    EXPECT_EQ(listed(), (std::vector<std::uint8_t> { 1, 2, 3, 4 }));
}

TEST_F(CardTest, ReturnedLengthIsClampedToTheChunk)
{
    registry.answerOnce(VX_OID_802_11_BSSID_LIST_NEXT, { .bytes = chunk(1, 1), .returnedLength = 0xFFFFFFFF });
    adapter.QueryBssidList();
    EXPECT_EQ(listed(), (std::vector<std::uint8_t> { 1 }));
}

TEST_F(CardTest, StaleBytesAfterAContinuationAreNotRead)
{
    continueWith(chunk(1, 3));
    Bytes wrongCount = chunk(4, 1);
    wrongCount[0] = std::byte { 3 }; // the chunk buffer still holds entries of the previous chunk
    continueWith(wrongCount);
    adapter.QueryBssidList();
    EXPECT_EQ(listed(), (std::vector<std::uint8_t> { 1, 2, 3, 4 }));
}

TEST(ConvertRssiToSignalQuality, FollowsTheCurveIncludingTheJumpBetweenItsBands)
{
    const std::vector<std::pair<std::int32_t, std::uint32_t>> points { { 0, 100 }, { 100, 100 }, { -50, 100 },
        { -51, 99 }, { -65, 63 }, { -80, 24 }, { -81, 23 }, { -85, 13 }, { -90, 0 }, { -91, 0 }, { -2147483647, 0 } };
    for (const auto& [dbm, quality] : points)
        EXPECT_EQ(VX7100Access::ConvertRssiToSignalQuality(dbm), quality) << dbm;
}

} // namespace
