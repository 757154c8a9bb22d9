#include "driver/records/Oids.h"
#include "survey/connection/ProfileData.h"
#include "survey/connection/TaskQueue.h"
#include "tests/profiles/automatic/AutomaticConnectionFixture.h"
#include "tests/support/NameIn.h"

#include <QTimer>

#include <algorithm>
#include <memory>

// The active profile is applied again whenever the card has lost it, with nothing clicked.

namespace {

using Names = std::vector<QString>;

class AutomaticConnectionTest : public AutomaticConnectionFixture {
protected:
    void addAnchorAndActivate()
    {
        addByHand(u"Anchor"_qs, u"anchor and chain"_qs);
        doubleClickProfile(table->numberOfRows() - 1);
        tick(ticksToSettle);
        ASSERT_EQ(connectedTo(), u"Anchor"_qs);
    }

    // The names in the full connections that wait to be made, the oldest first.
    static Names queuedNames()
    {
        Names names;
        for (auto task = ProfileDataQueue->rbegin(); task != ProfileDataQueue->rend(); ++task) {
            if ((*task)->getTaskType() == CONNECT_TASK_FULL)
                names.push_back(QString::fromUtf8(nameIn((*task)->Profile()->Ssid)));
        }
        return names;
    }
};

// The card starts anew and asks for its profile, and is not ready before it was asked so many times.
class SlowReset {
public:
    SlowReset(SimulatorThread& simulator, std::uint32_t polls)
        : m_simulator(simulator)
    {
        m_simulator.run([this, polls] {
            SimulatorService& service = m_simulator.service();
            // A delay of nothing counts the queries and changes none of them.
            service.faults().add({ .kind = FaultKind::Delay,
                .oid = VX_OID_802_11_READY_FLAG,
                .direction = FaultDirection::Query,
                .argument = 0,
                .remainingTimes = polls });
            service.card().holdReady(true);
            service.card().reset(service.nowMs());
            m_watch = std::make_unique<QTimer>();
            QObject::connect(m_watch.get(), &QTimer::timeout, m_watch.get(), [this] { releaseWhenAsked(); });
            m_watch->start(0);
        });
    }
    ~SlowReset()
    {
        m_simulator.run([this] { m_watch.reset(); });
    }
    SlowReset(const SlowReset&) = delete;
    SlowReset& operator=(const SlowReset&) = delete;

private:
    void releaseWhenAsked()
    {
        if (!m_simulator.service().faults().all().empty())
            return;
        m_simulator.service().card().holdReady(false);
        m_watch->stop();
    }

    SimulatorThread& m_simulator;
    std::unique_ptr<QTimer> m_watch; // lives on the simulator's thread
};

TEST_F(AutomaticConnectionTest, ProfilesMadeByHandAndFromTheSurveyComeBackWithTheCard)
{
    ASSERT_EQ(G_bDeviceExist, 1);
    addByHand(u"Anchor"_qs, u"anchor and chain"_qs);
    selectInSurvey("Compass");
    sheets.users.emplace_back([](QDialog& editor) {
        typePresharedKey(editor, u"north by northwest"_qs);
        pressOk(editor);
    });
    press(survey, u"AddProfile"_qs);
    ASSERT_EQ(table->numberOfRows(), 2);
    EXPECT_EQ(connectedTo(), QString()) << "making a profile sends nothing";
    EXPECT_EQ(mark(), QString());

    const Names networks { u"Anchor"_qs, u"Compass"_qs };
    for (int row = 0; row < 2; ++row) {
        const QString& network = networks[static_cast<std::size_t>(row)];
        doubleClickProfile(row);
        tick(ticksToSettle);
        EXPECT_EQ(connectedTo(), network);
        EXPECT_EQ(mark(), u"%1 CHECKMRK"_qs.arg(row));

        reinsert();
        EXPECT_EQ(connectedTo(), QString());
        tick(2);
        EXPECT_EQ(mark(), u"%1 UNCHECKMRK"_qs.arg(row)) << "the mark waits for the link";
        tick(ticksToSettle);
        EXPECT_EQ(connectedTo(), network);
        EXPECT_EQ(mark(), u"%1 CHECKMRK"_qs.arg(row));
        EXPECT_EQ(namesSet(), Names { network });
    }
    EXPECT_TRUE(alerts.alerts.empty());
    EXPECT_TRUE(assertions.failures.empty());
}

TEST_F(AutomaticConnectionTest, CardThatAsksForItsProfileIsWaitedForUntilItIsReady)
{
    addAnchorAndActivate();
    startRecording();
    constexpr std::uint32_t polls = 50;
    const SlowReset reset(simulator, polls);
    EXPECT_EQ(connectedTo(), QString());
    tick();
    const auto requests = recordedIn(recording);
    EXPECT_GE(countOf(requests, u"VX_OID_802_11_READY_FLAG"), polls);
    const auto isPoll = [](const RecordedRequest& each) { return each.name == u"VX_OID_802_11_READY_FLAG"; };
    const auto firstPoll = std::find_if(requests.begin(), requests.end(), isPoll);
    const auto lastPoll = std::find_if(requests.rbegin(), requests.rend(), isPoll).base();
    EXPECT_TRUE(std::all_of(firstPoll, lastPoll, [&](const RecordedRequest& each) {
        return isPoll(each) || each.name.isEmpty();
    })) << "nothing else is asked meanwhile";
    tick(ticksToSettle);
    EXPECT_EQ(namesSet(), Names { u"Anchor"_qs });
    EXPECT_EQ(connectedTo(), u"Anchor"_qs);
    EXPECT_EQ(mark(), u"0 CHECKMRK"_qs);
}

TEST_F(AutomaticConnectionTest, WithoutAnActiveProfileTheEventIsWaitedForAndAppliesNothing)
{
    startRecording();
    const SlowReset reset(simulator, 3);
    tick(ticksToSettle);
    EXPECT_GE(countOf(recordedIn(recording), u"VX_OID_802_11_READY_FLAG"), 3);
    EXPECT_EQ(namesSet(), Names {});
    EXPECT_EQ(connectedTo(), QString());
}

TEST_F(AutomaticConnectionTest, ProfileEditedAfterItsActivationComesBackAsItWasActivated)
{
    addAnchorAndActivate();
    sheets.users.emplace_back([](QDialog& editor) {
        typeSsid(editor, u"Compass"_qs);
        typePresharedKey(editor, u"another passphrase"_qs);
        pressOk(editor);
    });
    table->selectRowNumber(0);
    press(profiles, u"Edit"_qs);
    ASSERT_EQ(store.loadRecords().front().text(ProfileKey::ssid), u"Compass"_qs);
    ASSERT_EQ(store.loadRecords().front().text(ProfileKey::wpaPsk), u"another passphrase"_qs);

    reinsert();
    tick(ticksToSettle);
    EXPECT_EQ(namesSet(), Names { u"Anchor"_qs });
    EXPECT_EQ(connectedTo(), u"Anchor"_qs);
    EXPECT_EQ(mark(), u"0 CHECKMRK"_qs);

    doubleClickProfile(0);
    tick(ticksToSettle);
    EXPECT_EQ(connectedTo(), QString()) << "activated again, the edit counts";
}

TEST_F(AutomaticConnectionTest, ConnectionByHandInBetweenEndsIt)
{
    addAnchorAndActivate();
    selectInSurvey("Harbour Cafe");
    press(survey, u"Connect"_qs);
    tick(ticksToSettle);
    ASSERT_EQ(connectedTo(), u"Harbour Cafe"_qs);
    EXPECT_EQ(mark(), u"0 UNCHECKMRK"_qs);

    reinsert();
    tick(ticksToSettle);
    EXPECT_EQ(G_bDeviceExist, 1);
    EXPECT_EQ(namesSet(), Names {});
    EXPECT_EQ(connectedTo(), QString());
    EXPECT_EQ(mark(), u"0 UNCHECKMRK"_qs);
    EXPECT_EQ(G_configFromProfile, 0);
}

TEST_F(AutomaticConnectionTest, CardThatAsksAfterAConnectionByHandGetsNothing)
{
    addAnchorAndActivate();
    selectInSurvey("Harbour Cafe");
    press(survey, u"Connect"_qs);
    tick(ticksToSettle);
    ASSERT_EQ(setting()->front().text(ProfileKey::activeProfileFlag), u"NO"_qs);
    const ProfileList before = *setting();

    startRecording();
    const SlowReset reset(simulator, 3);
    tick();
    EXPECT_GE(countOf(recordedIn(recording), u"VX_OID_802_11_READY_FLAG"), 3) << "the card was waited for all the same";
    EXPECT_EQ(ProfileDataQueue->size(), 0u);
    tick(ticksToSettle);
    EXPECT_EQ(namesSet(), Names {});
    const auto requests = recordedIn(recording);
    EXPECT_TRUE(std::none_of(requests.begin(), requests.end(), [](const RecordedRequest& each) {
        return each.set && each.name == u"OID_802_11_BSSID";
    })) << "nor is it told to join by address";
    EXPECT_EQ(connectedTo(), QString());
    EXPECT_EQ(G_configFromProfile, 0);
    EXPECT_EQ(setting(), before);
}

// The two ways to the same profile do not know of each other: it is queued once by the event and once by the card.
TEST_F(AutomaticConnectionTest, CardThatComesBackAskingGetsTheStoredCopyTwice)
{
    addAnchorAndActivate();
    sheets.users.emplace_back([](QDialog& editor) {
        typeSsid(editor, u"Compass"_qs);
        pressOk(editor);
    });
    table->selectRowNumber(0);
    press(profiles, u"Edit"_qs);
    ASSERT_EQ(store.loadRecords().front().text(ProfileKey::ssid), u"Compass"_qs);

    reinsert();
    simulator.run([this] { simulator.service().card().raiseEvent(); });
    tick();
    ASSERT_EQ(G_bDeviceExist, 1);
    EXPECT_EQ(queuedNames(), (Names { u"Anchor"_qs, u"Anchor"_qs }));
    EXPECT_TRUE(mark().startsWith(u"0 "));
    tick(ticksToSettle);
    EXPECT_EQ(namesSet(), (Names { u"Anchor"_qs, u"Anchor"_qs }));
    EXPECT_EQ(connectedTo(), u"Anchor"_qs);
    EXPECT_EQ(mark(), u"0 CHECKMRK"_qs);
}

TEST_F(AutomaticConnectionTest, ProfileAboveTheActiveOneDeletedLeavesTheOldNumber)
{
    addByHand(u"Harbour Cafe"_qs);
    addAnchorAndActivate();
    addByHand(u"Quay Guest"_qs);
    ASSERT_EQ(table->numberOfRows(), 3);
    ASSERT_EQ(setting()->front().text(u"Selected"), u"1"_qs);

    deleteProfile(0);
    ASSERT_EQ(table->numberOfRows(), 2);
    ASSERT_TRUE(setting());
    EXPECT_EQ(setting()->front().text(u"Selected"), u"1"_qs);
    EXPECT_EQ(mark(), u"1 CHECKMRK"_qs) << "the row that now has the number";

    reinsert();
    tick(ticksToSettle);
    EXPECT_EQ(namesSet(), Names { u"Anchor"_qs });
    EXPECT_EQ(connectedTo(), u"Anchor"_qs);
    EXPECT_EQ(mark(), u"1 CHECKMRK"_qs);

    // Not the active profile any more, but the row that its record names.
    deleteProfile(1);
    EXPECT_FALSE(setting());
    EXPECT_EQ(store.loadRecords().front().text(ProfileKey::ssid), u"Anchor"_qs);
    reinsert();
    tick(ticksToSettle);
    EXPECT_EQ(G_bDeviceExist, 1);
    EXPECT_EQ(namesSet(), Names {});
    EXPECT_EQ(connectedTo(), QString());
}

} // namespace
