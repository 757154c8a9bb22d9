#include "app/QvConfig7100Controller.h"

#include "app/shared/CardPresence.h"
#include "app/shared/Pages.h"
#include "app/shared/SharedState.h"
#include "driver/VX7100Access.h"
#include "driver/records/Oids.h"
#include "tests/support/BssidListBuilder.h"
#include "tests/support/InitialSharedState.h"
#include "tests/support/ManualRunLoop.h"
#include "tests/support/RecordingAlertPanels.h"
#include "tests/support/RecordingIORegistry.h"
#include "tests/support/RecordingTickClock.h"
#include "tests/support/StandardErrorOf.h"

#include <QTabWidget>
#include <gtest/gtest.h>

#include <functional>

namespace {

using Calls = std::vector<std::string>;
using namespace std::chrono_literals;

// All four pages in one, which records the calls in order.
class RecordingPages final : public SiteSurveyPage, public ProfilePage, public AdvancePage, public AboutPage {
public:
    explicit RecordingPages(Calls& calls)
        : m_calls(calls)
    {
    }

    void ClearAPList() override { m_calls.emplace_back("ClearAPList"); }
    void RefreshAPList() override { m_calls.emplace_back("RefreshAPList"); }
    void StartSiteSurveyTimer() override { m_calls.emplace_back("StartSiteSurveyTimer"); }
    void StopSiteSurveyTimer() override { m_calls.emplace_back("StopSiteSurveyTimer"); }
    void UpdateConnectStatus(const QString& /*text*/) override { m_calls.emplace_back("UpdateConnectStatus"); }
    void RefreshProfileList() override { m_calls.emplace_back("RefreshProfileList"); }
    void CheckProfileSettingForConnect() override { m_calls.emplace_back("CheckProfileSettingForConnect"); }
    void DisabledActivateProfile() override { m_calls.emplace_back("DisabledActivateProfile"); }
    void RadioStatus() override { m_calls.emplace_back("RadioStatus"); }
    void OnApply() override { m_calls.emplace_back("OnApply"); }
    void ForgetCard() override { m_calls.emplace_back("ForgetCard"); }
    void ShowCard() override { ++timesCardShown; }
    void GetAllInformation() override { m_calls.emplace_back("GetAllInformation"); }

    int timesCardShown { 0 };

private:
    Calls& m_calls;
};

class DeviceWatchTest : public testing::Test {
protected:
    InitialSharedState initialState;
    Calls calls;
    RecordingPages pages { calls };
    RecordingIORegistry registry;
    RecordingTickClock clock;
    RecordingAlertPanels alerts;
    ManualRunLoop runLoop;
    QTabWidget tabView;
    VX7100Access adapter { registry, clock, alerts };
    QvConfig7100Controller controller { adapter, runLoop, tabView, { &pages, &pages, &pages, &pages } };

    void SetUp() override
    {
        // The delay of the scan marks the card initialisation among the calls.
        clock.onDelay = [this](std::uint32_t) { calls.emplace_back("InitCard"); };
    }

    void findCard()
    {
        controller.OnTimer();
        ASSERT_EQ(G_bDeviceExist, 1);
        calls.clear();
        registry.forgetCalls();
    }

    void removeCard() { registry.serviceCount = 0; }
};

const Calls fullRefresh { "InitCard", "RefreshAPList", "StartSiteSurveyTimer", "RefreshProfileList",
    "CheckProfileSettingForConnect", "RadioStatus", "OnApply", "GetAllInformation" };

TEST_F(DeviceWatchTest, StartShowsTheThirdTabAndSendsNoRequest)
{
    for (int tab = 0; tab < 6; ++tab)
        tabView.addTab(new QWidget, QString());
    controller.awakeFromNib();
    EXPECT_EQ(tabView.currentIndex(), 2);
    EXPECT_EQ(runLoop.activeIntervals(), (std::vector<std::chrono::milliseconds> { 2000ms }));
    EXPECT_TRUE(registry.calls.empty());
    EXPECT_TRUE(calls.empty());
}

TEST_F(DeviceWatchTest, FirstTickWithoutACardClearsTheListAndStopsTheSurvey)
{
    removeCard();
    controller.awakeFromNib();
    runLoop.advance(1999ms);
    EXPECT_TRUE(registry.calls.empty());
    runLoop.advance(1ms);
    EXPECT_EQ(calls, (Calls { "ClearAPList", "StopSiteSurveyTimer", "ForgetCard" }));
    EXPECT_EQ(G_bDeviceExist, 0);
    EXPECT_EQ(G_bDeviceRemove, 1);
    EXPECT_TRUE(registry.oids().empty());
    EXPECT_TRUE(registry.held().empty());
}

TEST_F(DeviceWatchTest, InsertedCardIsInitialisedBeforeThePagesRefreshInOrder)
{
    controller.OnTimer();
    EXPECT_EQ(calls, fullRefresh);
    EXPECT_EQ(G_bDeviceExist, 1);
    EXPECT_EQ(G_bDeviceRemove, 0);
    EXPECT_EQ(registry.oids(),
        (std::vector<std::uint32_t> { OID_GEN_MEDIA_CONNECT_STATUS, VX_OID_802_11_EVENT_FLAG, VX_OID_802_11_STA_CONFIG,
            OID_802_11_NETWORK_TYPES_SUPPORTED, OID_802_11_BSSID_LIST_SCAN | oidSetFlag, OID_802_11_BSSID_LIST,
            VX_OID_802_11_BSSID_LIST_NEXT }));
}

TEST_F(DeviceWatchTest, PagesRefreshEvenIfTheInitialisationFails)
{
    Bytes configuration(32);
    configuration[28] = std::byte { 1 };
    registry.answer(VX_OID_802_11_STA_CONFIG, configuration);
    controller.OnTimer();
    EXPECT_EQ(alerts.alerts.size(), 1u);
    EXPECT_EQ(calls, Calls(fullRefresh.begin() + 1, fullRefresh.end()));
}

TEST_F(DeviceWatchTest, PresentCardGetsTwoQueriesPerTick)
{
    findCard();
    G_bDeviceRemove = 1;
    controller.OnTimer();
    EXPECT_TRUE(calls.empty());
    EXPECT_EQ(G_bDeviceRemove, 0);
    EXPECT_EQ(registry.oids(), (std::vector<std::uint32_t> { OID_GEN_MEDIA_CONNECT_STATUS, VX_OID_802_11_EVENT_FLAG }));
}

TEST_F(DeviceWatchTest, RadioOffClearsTheListOnEveryTick)
{
    findCard();
    G_bRadio = 0;
    controller.OnTimer();
    controller.OnTimer();
    EXPECT_EQ(calls, (Calls { "ClearAPList", "ClearAPList" }));
}

TEST_F(DeviceWatchTest, RemovedCardClearsTheListAndStopsTheSurvey)
{
    findCard();
    removeCard();
    controller.OnTimer();
    EXPECT_EQ(calls, (Calls { "ClearAPList", "StopSiteSurveyTimer", "ForgetCard" }));
    EXPECT_EQ(G_bDeviceExist, 0);
    EXPECT_EQ(G_bDeviceRemove, 1);
}

TEST_F(DeviceWatchTest, ReinsertedCardRunsTheFullRefresh)
{
    findCard();
    removeCard();
    controller.OnTimer();
    calls.clear();
    registry.serviceCount = 1;
    controller.OnTimer();
    EXPECT_EQ(calls, fullRefresh);
}

TEST_F(DeviceWatchTest, UnresponsiveCardThatCanBeOpenedRunsTheFullRefresh)
{
    findCard();
    registry.fail(OID_GEN_MEDIA_CONNECT_STATUS);
    controller.OnTimer();
    Calls expected { "ClearAPList" };
    expected.insert(expected.end(), fullRefresh.begin(), fullRefresh.end());
    EXPECT_EQ(calls, expected);
    EXPECT_EQ(G_bDeviceExist, 1);
}

TEST_F(DeviceWatchTest, RefusedUserClientCountsAsNoCard)
{
    findCard();
    // The two queries and IsDeviceDriverExist.
    registry.failAt(RegistryCall::IOServiceOpen);
    registry.failAt(RegistryCall::IOServiceOpen, 2);
    registry.failAt(RegistryCall::IOServiceOpen, 3);
    controller.OnTimer();
    EXPECT_EQ(calls, (Calls { "ClearAPList", "StopSiteSurveyTimer", "ForgetCard" }));
    EXPECT_EQ(G_bDeviceExist, 0);
    EXPECT_EQ(cardPresence, CardPresence::Silent);
    EXPECT_TRUE(registry.held().empty());
}

TEST_F(DeviceWatchTest, EachTickShowsWhatIsKnownAboutTheCard)
{
    controller.OnTimer();
    controller.OnTimer();
    removeCard();
    controller.OnTimer();
    EXPECT_EQ(pages.timesCardShown, 3);
}

TEST_F(DeviceWatchTest, TellsAMissingCardFromOneThatDoesNotAnswer)
{
    removeCard();
    controller.OnTimer();
    EXPECT_EQ(cardPresence, CardPresence::Absent);
    registry.serviceCount = 1;
    controller.OnTimer();
    EXPECT_EQ(cardPresence, CardPresence::Answering);
    controller.OnTimer();
    EXPECT_EQ(cardPresence, CardPresence::Answering);
    registry.fail(OID_GEN_MEDIA_CONNECT_STATUS);
    controller.OnTimer();
    EXPECT_EQ(cardPresence, CardPresence::Silent);
}

TEST_F(DeviceWatchTest, TickDuringAnInitialisationDoesNothing)
{
    G_bDialogRunning = 1;
    controller.OnTimer();
    EXPECT_TRUE(registry.calls.empty());
    EXPECT_TRUE(calls.empty());
}

TEST_F(DeviceWatchTest, UnselectedCardCountsAsRemoved)
{
    G_bSelCard = 0;
    G_bDeviceRemove = 0;
    controller.OnTimer();
    EXPECT_TRUE(calls.empty());
    EXPECT_EQ(G_bDeviceExist, 1);
    EXPECT_EQ(G_bDeviceRemove, 1);
}

TEST_F(DeviceWatchTest, EventFlagPollsTheReadyFlagThenReappliesTheProfile)
{
    findCard();
    registry.answerOnce(VX_OID_802_11_EVENT_FLAG, { .bytes = bytesOf({ 1, 0xAB, 0xCD, 0xEF }) });
    for (int poll = 0; poll < 100; ++poll)
        registry.answerOnce(VX_OID_802_11_READY_FLAG, { .bytes = bytesOf({ poll % 2 == 0 ? 0 : 2, 0, 0, 0 }) });
    registry.answerOnce(VX_OID_802_11_READY_FLAG, { .succeeds = false });
    registry.answerOnce(VX_OID_802_11_READY_FLAG, { .bytes = bytesOf({ 1, 1, 0, 0 }) }); // 257 is not ready
    registry.answerOnce(VX_OID_802_11_READY_FLAG, { .bytes = bytesOf({ 1, 0, 0, 0 }) });
    controller.OnTimer();
    EXPECT_EQ(calls, (Calls { "CheckProfileSettingForConnect" }));
    EXPECT_EQ(registry.inputsOf(VX_OID_802_11_READY_FLAG).size(), 103u);
    EXPECT_EQ(clock.delays.size(), 1u); // from the initialisation: polling does not wait
}

TEST_F(DeviceWatchTest, ProfileIsReappliedBeforeTheListOfAnUnresponsiveCardIsCleared)
{
    findCard();
    registry.fail(OID_GEN_MEDIA_CONNECT_STATUS);
    registry.answerOnce(VX_OID_802_11_EVENT_FLAG, { .bytes = bytesOf({ 1, 0, 0, 0 }) });
    registry.answer(VX_OID_802_11_READY_FLAG, bytesOf({ 1, 0, 0, 0 }));
    controller.OnTimer();
    Calls expected { "CheckProfileSettingForConnect", "ClearAPList" };
    expected.insert(expected.end(), fullRefresh.begin(), fullRefresh.end());
    EXPECT_EQ(calls, expected);
}

TEST_F(DeviceWatchTest, OnlyTheLowByteOfTheEventFlagCounts)
{
    findCard();
    registry.answerOnce(VX_OID_802_11_EVENT_FLAG, { .bytes = bytesOf({ 0, 1, 1, 1 }) });
    registry.answerOnce(VX_OID_802_11_EVENT_FLAG, { .bytes = bytesOf({ 2, 0, 0, 0 }) });
    registry.answerOnce(VX_OID_802_11_EVENT_FLAG, { .bytes = bytesOf({ 0xFF, 0, 0, 0 }) });
    for (int tick = 0; tick < 3; ++tick)
        controller.OnTimer();
    EXPECT_TRUE(calls.empty());
}

TEST_F(DeviceWatchTest, ExistenceCheckOpensAndClosesTheDriver)
{
    EXPECT_TRUE(controller.IsDeviceDriverExist());
    EXPECT_EQ(registry.count(RegistryCall::IOServiceOpen), 1);
    EXPECT_EQ(registry.count(RegistryCall::IOConnectMethodStructureIStructureO), 0);
    EXPECT_TRUE(registry.held().empty());
}

TEST_F(DeviceWatchTest, ExistenceCheckTracesItsFailures)
{
    const auto check = [this] { EXPECT_FALSE(controller.IsDeviceDriverExist()); };
    removeCard();
    const std::string withoutCard = tracesOf(check);
    EXPECT_TRUE(withoutCard.starts_with("#### QvConfig7100Controller - IsDeviceDriverExist ####\n"));
    EXPECT_NE(withoutCard.find("!!!! QvConfig7100Controller - IsDeviceDriverExist - Device is not existenet. !!!!\n"
                               "#### VX7100Access - CloseConnectToDevice ####\n"),
        std::string::npos);

    registry.serviceCount = 1;
    registry.failAt(RegistryCall::IOServiceOpen);
    EXPECT_NE(tracesOf(check).find("!!!! QvConfig7100Controller - IsDeviceDriverExist - Can't connect to device. !!!!\n"
                                   "#### VX7100Access - CloseConnectToDevice ####\n"),
        std::string::npos);
}

TEST_F(DeviceWatchTest, OperationsTraceTheirEntry)
{
    struct Operation {
        std::string name;
        std::function<void()> run;
    };
    const std::vector<Operation> operations {
        { "init", [this] { const QvConfig7100Controller another(adapter, runLoop, tabView, {}); } },
        { "awakeFromNib", [this] { controller.awakeFromNib(); } },
        { "OnTimer", [this] { controller.OnTimer(); } },
    };
    for (const Operation& operation : operations) {
        const std::string written = tracesOf(operation.run);
        EXPECT_TRUE(written.starts_with("#### QvConfig7100Controller - " + operation.name + " ####\n")) << written;
    }
}

TEST_F(DeviceWatchTest, TickDuringAnInitialisationIsTraced)
{
    G_bDialogRunning = 1;
    EXPECT_EQ(tracesOf([this] { controller.OnTimer(); }), "#### QvConfig7100Controller - OnTimer ####\n");
}

TEST_F(DeviceWatchTest, AbsentPagesAreSkipped)
{
    QvConfig7100Controller controllerWithoutPages(adapter, runLoop, tabView, {});
    registry.answerOnce(VX_OID_802_11_EVENT_FLAG, { .bytes = bytesOf({ 1, 0, 0, 0 }) });
    registry.answer(VX_OID_802_11_READY_FLAG, bytesOf({ 1, 0, 0, 0 }));
    controllerWithoutPages.OnTimer();
    G_bRadio = 0;
    controllerWithoutPages.OnTimer();
    removeCard();
    controllerWithoutPages.OnTimer();
    EXPECT_EQ(calls, (Calls { "InitCard" }));
    EXPECT_EQ(G_bDeviceExist, 0);
}

} // namespace
