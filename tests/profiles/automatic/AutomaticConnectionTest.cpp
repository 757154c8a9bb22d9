#include "driver/records/Oids.h"
#include "survey/connection/ProfileData.h"
#include "survey/connection/TaskQueue.h"
#include "tests/support/NameIn.h"
#include "tests/support/application/UtilityRunFixture.h"

#include <QTimer>

#include <algorithm>
#include <memory>

// The active profile is re-applied without any user action whenever the card has lost it.

namespace {

using Ssids = std::vector<QString>;

class AutomaticConnectionTest : public UtilityRunFixture {
protected:
    void addAnchorAndActivate()
    {
        addManually(u"Anchor"_qs, u"anchor and chain"_qs);
        doubleClickProfile(table->numberOfRows() - 1);
        tick(ticksToSettle);
        ASSERT_EQ(connectedTo(), u"Anchor"_qs);
    }

    // The SSIDs of the queued full connections, oldest first.
    static Ssids queuedSsids()
    {
        Ssids ssids;
        for (auto task = ProfileDataQueue->rbegin(); task != ProfileDataQueue->rend(); ++task) {
            if ((*task)->getTaskType() == CONNECT_TASK_FULL)
                ssids.push_back(QString::fromUtf8(nameIn((*task)->Profile()->Ssid)));
        }
        return ssids;
    }
};

// Resets the card, which then requests its profile and becomes ready only after it was polled this many times.
class SlowReset {
    Q_DISABLE_COPY_MOVE(SlowReset)

public:
    SlowReset(SimulatorThread& simulator, std::uint32_t polls)
        : m_simulator(simulator)
    {
        m_simulator.run([this, polls] {
            SimulatorService& service = m_simulator.service();
            // A zero delay only counts the queries.
            service.faults().add({ .kind = FaultKind::Delay,
                .oid = VX_OID_802_11_READY_FLAG,
                .direction = FaultDirection::Query,
                .argument = 0,
                .remainingTimes = polls });
            service.card().holdReady(true);
            service.card().reset(service.nowMs());
            m_watch = std::make_unique<QTimer>();
            QObject::connect(m_watch.get(), &QTimer::timeout, m_watch.get(), [this] { releaseAfterPolls(); });
            m_watch->start(0);
        });
    }
    ~SlowReset()
    {
        m_simulator.run([this] { m_watch.reset(); });
    }

private:
    void releaseAfterPolls()
    {
        if (!m_simulator.service().faults().all().empty())
            return;
        m_simulator.service().card().holdReady(false);
        m_watch->stop();
    }

    SimulatorThread& m_simulator;
    std::unique_ptr<QTimer> m_watch; // lives on the simulator's thread
};

TEST_F(AutomaticConnectionTest, ReinsertedCardGetsTheActiveProfile)
{
    ASSERT_EQ(G_bDeviceExist, 1);
    addManually(u"Anchor"_qs, u"anchor and chain"_qs);
    select("Compass");
    sheets.users.emplace_back([](QDialog& editor) {
        typePresharedKey(editor, u"north by northwest"_qs);
        pressOk(editor);
    });
    press(survey, u"AddProfile"_qs);
    ASSERT_EQ(table->numberOfRows(), 2);
    EXPECT_EQ(connectedTo(), QString()) << "adding a profile sends nothing";
    EXPECT_EQ(mark(), QString());

    const Ssids networks { u"Anchor"_qs, u"Compass"_qs };
    for (int row = 0; row < 2; ++row) {
        const QString& network = networks[static_cast<std::size_t>(row)];
        doubleClickProfile(row);
        tick(ticksToSettle);
        EXPECT_EQ(connectedTo(), network);
        EXPECT_EQ(mark(), u"%1 CHECKMRK"_qs.arg(row));

        reinsert();
        EXPECT_EQ(connectedTo(), QString());
        tick(2);
        EXPECT_EQ(mark(), u"%1 UNCHECKMRK"_qs.arg(row)) << "not checked before the link is up";
        tick(ticksToSettle);
        EXPECT_EQ(connectedTo(), network);
        EXPECT_EQ(mark(), u"%1 CHECKMRK"_qs.arg(row));
        EXPECT_EQ(ssidsSet(), Ssids { network });
    }
    EXPECT_TRUE(alerts.alerts.empty());
    EXPECT_TRUE(assertions.failures.empty());
}

TEST_F(AutomaticConnectionTest, EventFlagPollsUntilTheCardIsReadyAndReappliesTheProfile)
{
    addAnchorAndActivate();
    startRecording();
    constexpr std::uint32_t polls = 50;
    const SlowReset reset(simulator, polls);
    EXPECT_EQ(connectedTo(), QString());
    tick();
    const auto requests = recordedIn(recording);
    EXPECT_GE(countOf(requests, u"VX_OID_802_11_READY_FLAG"), polls);
    const auto isPoll = [](const RecordedLine& each) { return each.name == u"VX_OID_802_11_READY_FLAG"; };
    const auto firstPoll = std::find_if(requests.begin(), requests.end(), isPoll);
    const auto lastPoll = std::find_if(requests.rbegin(), requests.rend(), isPoll).base();
    EXPECT_TRUE(std::all_of(firstPoll, lastPoll, [&](const RecordedLine& each) {
        return isPoll(each) || each.name.isEmpty();
    })) << "no other request between the polls";
    tick(ticksToSettle);
    EXPECT_EQ(ssidsSet(), Ssids { u"Anchor"_qs });
    EXPECT_EQ(connectedTo(), u"Anchor"_qs);
    EXPECT_EQ(mark(), u"0 CHECKMRK"_qs);
}

TEST_F(AutomaticConnectionTest, EventFlagWithoutAnActiveProfilePollsAndAppliesNothing)
{
    startRecording();
    const SlowReset reset(simulator, 3);
    tick(ticksToSettle);
    EXPECT_GE(countOf(recordedIn(recording), u"VX_OID_802_11_READY_FLAG"), 3);
    EXPECT_EQ(ssidsSet(), Ssids {});
    EXPECT_EQ(connectedTo(), QString());
}

TEST_F(AutomaticConnectionTest, EditedProfileIsReappliedAsItWasActivated)
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
    EXPECT_EQ(ssidsSet(), Ssids { u"Anchor"_qs });
    EXPECT_EQ(connectedTo(), u"Anchor"_qs);
    EXPECT_EQ(mark(), u"0 CHECKMRK"_qs);

    doubleClickProfile(0);
    tick(ticksToSettle);
    EXPECT_EQ(connectedTo(), QString()) << "the edit takes effect on the next activation";
}

TEST_F(AutomaticConnectionTest, ManualConnectionEndsAutomaticConnection)
{
    addAnchorAndActivate();
    connectTo("Harbour Cafe");
    tick(ticksToSettle);
    ASSERT_EQ(connectedTo(), u"Harbour Cafe"_qs);
    EXPECT_EQ(mark(), u"0 UNCHECKMRK"_qs);

    reinsert();
    tick(ticksToSettle);
    EXPECT_EQ(G_bDeviceExist, 1);
    EXPECT_EQ(ssidsSet(), Ssids {});
    EXPECT_EQ(connectedTo(), QString());
    EXPECT_EQ(mark(), u"0 UNCHECKMRK"_qs);
    EXPECT_EQ(G_configFromProfile, 0);
}

TEST_F(AutomaticConnectionTest, EventFlagAfterAManualConnectionAppliesNothing)
{
    addAnchorAndActivate();
    connectTo("Harbour Cafe");
    tick(ticksToSettle);
    ASSERT_EQ(setting()->front().text(ProfileKey::activeProfileFlag), u"NO"_qs);
    const ProfileList before = *setting();

    startRecording();
    const SlowReset reset(simulator, 3);
    tick();
    EXPECT_GE(countOf(recordedIn(recording), u"VX_OID_802_11_READY_FLAG"), 3) << "the ready flag is polled anyway";
    EXPECT_EQ(ProfileDataQueue->size(), 0u);
    tick(ticksToSettle);
    EXPECT_EQ(ssidsSet(), Ssids {});
    const auto requests = recordedIn(recording);
    EXPECT_TRUE(std::none_of(requests.begin(), requests.end(), [](const RecordedLine& each) {
        return each.set && each.name == u"OID_802_11_BSSID";
    })) << "no association by address either";
    EXPECT_EQ(connectedTo(), QString());
    EXPECT_EQ(G_configFromProfile, 0);
    EXPECT_EQ(setting(), before);
}

// The event flag and the insertion each queue the profile.
TEST_F(AutomaticConnectionTest, InsertedCardWithEventFlagQueuesTheProfileTwice)
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
    EXPECT_EQ(queuedSsids(), (Ssids { u"Anchor"_qs, u"Anchor"_qs }));
    EXPECT_TRUE(mark().startsWith(u"0 "));
    tick(ticksToSettle);
    EXPECT_EQ(ssidsSet(), (Ssids { u"Anchor"_qs, u"Anchor"_qs }));
    EXPECT_EQ(connectedTo(), u"Anchor"_qs);
    EXPECT_EQ(mark(), u"0 CHECKMRK"_qs);
}

TEST_F(AutomaticConnectionTest, DeletingAProfileAboveTheActiveOneKeepsTheRowNumber)
{
    addManually(u"Harbour Cafe"_qs);
    addAnchorAndActivate();
    addManually(u"Quay Guest"_qs);
    ASSERT_EQ(table->numberOfRows(), 3);
    ASSERT_EQ(setting()->front().text(u"Selected"), u"1"_qs);

    deleteProfile(0);
    ASSERT_EQ(table->numberOfRows(), 2);
    ASSERT_TRUE(setting());
    EXPECT_EQ(setting()->front().text(u"Selected"), u"1"_qs);
    EXPECT_EQ(mark(), u"1 CHECKMRK"_qs) << "the row that has this number now";

    reinsert();
    tick(ticksToSettle);
    EXPECT_EQ(ssidsSet(), Ssids { u"Anchor"_qs });
    EXPECT_EQ(connectedTo(), u"Anchor"_qs);
    EXPECT_EQ(mark(), u"1 CHECKMRK"_qs);

    // No longer the active profile, but the row that the activation record names.
    deleteProfile(1);
    EXPECT_FALSE(setting());
    EXPECT_EQ(store.loadRecords().front().text(ProfileKey::ssid), u"Anchor"_qs);
    reinsert();
    tick(ticksToSettle);
    EXPECT_EQ(G_bDeviceExist, 1);
    EXPECT_EQ(ssidsSet(), Ssids {});
    EXPECT_EQ(connectedTo(), QString());
}

} // namespace
