#include "app/shared/SharedState.h"
#include "driver/BssidList.h"
#include "driver/MacAddressText.h"
#include "driver/records/Oids.h"
#include "monitor/StatisticsFigures.h"
#include "platform/ui/TableView.h"
#include "tests/app/faults/UtilityOnVirtualTime.h"

#include <QCheckBox>
#include <QLabel>
#include <QTabBar>
#include <QTabWidget>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <functional>
#include <iostream>
#include <memory>
#include <set>
#include <span>
#include <string_view>

// Every request of every situation, hit by every fault. The requests are recorded in a clean run, so that no list of
// them has to be maintained. After each fault the utility is checked during the fault, at the next tick without it, and
// after the situation has been repeated without it.

namespace {

using Machine = std::unique_ptr<UtilityOnVirtualTime>;

struct Situation {
    std::string name;
    MainWindow::Page page;
    std::function<void(Machine&)> prepare; // once
    std::function<void(Machine&)> arrange; // before every run; brings the card to the state that the situation needs
    std::function<void(UtilityOnVirtualTime&)> act; // the situation itself
    int ticksToSettle { 2 };
    std::vector<std::string> includes {}; // other situations, whose requests are left to them
};

// Allows for the initialisation that follows an unanswered tick, and for the polls of the ready flag.
constexpr std::size_t extraRequests = 300;
constexpr std::int64_t scanMs = 2000;
constexpr std::int64_t maxListMs = 4000;

void start(Machine& machine)
{
    machine.reset();
    machine = std::make_unique<UtilityOnVirtualTime>();
}

void startAndTick(Machine& machine)
{
    start(machine);
    machine->awakeFromNib();
    machine->tick(2);
}

void startWithAllNetworks(Machine& machine)
{
    machine.reset();
    machine = std::make_unique<UtilityOnVirtualTime>(UtilityOnVirtualTime::Networks::All);
    machine->awakeFromNib();
    machine->tick(2);
}

void startWithProfile(Machine& machine)
{
    startAndTick(machine);
    machine->addProfile("Threes");
    machine->activateFirstProfile();
    machine->tick(3);
}

void nothing(Machine& /*machine*/) { }

void eject(Machine& machine)
{
    machine->registry.setInserted(false);
    machine->tick();
}

void insert(UtilityOnVirtualTime& utility)
{
    utility.registry.setInserted(true);
    utility.tick();
}

void ensureLinkOfProfile(Machine& machine)
{
    if (machine->cardState().association.peer() && G_configFromProfile != 0)
        return;
    machine->activateFirstProfile();
    machine->tick(3);
}

void bringBackHarbourCafe(Machine& machine)
{
    if (machine->card.addNetwork(machine->network("Harbour Cafe"), machine->time.nowMs))
        machine->tick(2);
    machine->ensureLinkTo("Harbour Cafe");
}

void applySettings(UtilityOnVirtualTime& utility, int mode, bool burst)
{
    auto& page = *utility.application.window().findChild<AdvancePageController*>();
    auto& modes = utility.control<ComboBox>("WirelessMode");
    bringToFront(modes);
    modes.setFocus();
    while (modes.indexOfSelectedItem() < mode)
        QTest::keyClick(&modes, Qt::Key_Down);
    while (modes.indexOfSelectedItem() > mode)
        QTest::keyClick(&modes, Qt::Key_Up);
    utility.control<QCheckBox>("EnableTXburst").setChecked(burst);
    page.OnApply(); // the second one sends the mode
    page.OnApply();
}

void switchRadioOffAndOn(UtilityOnVirtualTime& utility)
{
    auto& page = *utility.application.window().findChild<AdvancePageController*>();
    press(page, u"Radio"_qs);
    press(page, u"Radio"_qs);
}

Situation join(const std::string& ssid)
{
    return { "Join " + ssid, MainWindow::Page::SiteSurvey, startAndTick,
        [ssid](Machine& machine) { machine->ensureLinkTo(ssid); },
        [ssid](UtilityOnVirtualTime& utility) {
            utility.connectTo(ssid);
            utility.tick();
        },
        2, { "TickWithLink" } };
}

const std::vector<Situation>& situations()
{
    using Page = MainWindow::Page;
    static const std::vector<Situation> all {
        { "Start", Page::LinkStatus, nothing, start, [](UtilityOnVirtualTime& utility) { utility.awakeFromNib(); } },
        { "Insertion", Page::SiteSurvey, startAndTick, eject, insert },
        { "TickWithoutLink", Page::LinkStatus, startAndTick, nothing, [](auto& utility) { utility.tick(); } },
        { "TickWithLink", Page::LinkStatus, startAndTick,
            [](Machine& machine) { machine->ensureLinkTo("Harbour Cafe"); }, [](auto& utility) { utility.tick(); } },
        { "LostLink", Page::SiteSurvey, startAndTick, bringBackHarbourCafe,
            [](UtilityOnVirtualTime& utility) {
                (void)utility.card.removeNetwork(utility.network("Harbour Cafe").bssid, utility.time.nowMs);
                utility.tick();
            },
            7, { "TickWithLink" } },
        { "Rescan", Page::SiteSurvey, startWithAllNetworks, nothing,
            [](UtilityOnVirtualTime& utility) {
                press(utility.survey, u"Rescan"_qs);
                utility.tick();
            },
            2, { "TickWithoutLink" } },
        join("Harbour Cafe"),
        join("Pearl Diver"),
        join("Threes"),
        join("Raft"),
        { "Activation", Page::Profiles, startWithProfile, ensureLinkOfProfile,
            [](UtilityOnVirtualTime& utility) {
                utility.activateFirstProfile();
                utility.tick();
            },
            2, { "TickWithLink" } },
        { "InsertionWithActiveProfile", Page::Profiles, startWithProfile, eject,
            [](UtilityOnVirtualTime& utility) {
                insert(utility);
                utility.tick(); // connects
            },
            2, { "TickWithLink", "Insertion" } },
        { "EventOfTheDriver", Page::Profiles, startWithProfile, ensureLinkOfProfile,
            [](UtilityOnVirtualTime& utility) {
                utility.card.raiseEvent();
                utility.tick();
            },
            2, { "TickWithLink" } },
        { "Apply", Page::AdvancedSettings, startAndTick, [](Machine& machine) { applySettings(*machine, 0, false); },
            [](UtilityOnVirtualTime& utility) { applySettings(utility, 1, true); } },
        { "RadioSwitch", Page::AdvancedSettings, startAndTick, nothing, switchRadioOffAndOn },
        { "ResetOfTheCounters", Page::Statistics, startAndTick,
            [](Machine& machine) { machine->ensureLinkTo("Harbour Cafe"); },
            [](UtilityOnVirtualTime& utility) {
                press(*utility.application.window().findChild<StatisticsPageController*>(), u"ResetCounter"_qs);
            } },
    };
    return all;
}

bool isListRequest(const FaultyCardRegistry::Request& request)
{
    return request.oid == OID_802_11_BSSID_LIST || request.oid == VX_OID_802_11_BSSID_LIST_NEXT;
}

std::set<std::uint32_t> oidsOf(const std::string& name)
{
    const auto& all = situations();
    const auto situation
        = std::find_if(all.begin(), all.end(), [&name](const auto& each) { return each.name == name; });
    Machine machine;
    situation->prepare(machine);
    situation->arrange(machine);
    machine->registry.startRecording();
    situation->act(*machine);
    std::set<std::uint32_t> oids;
    for (const auto& request : machine->registry.requests())
        oids.insert(request.oid.value_or(0));
    return oids;
}

class FaultMatrix : public testing::TestWithParam<Situation> {
protected:
    UtilityOnVirtualTime& utility() { return *m_machine; }

    void record()
    {
        for (const std::string& name : GetParam().includes)
            m_leftToOthers.merge(oidsOf(name));
        GetParam().prepare(m_machine);
        m_catalogue = cleanRun();
        recordTicks(GetParam().ticksToSettle);
        m_expected = utility().snapshot();
        recordTicks(ticksToSmooth);
        m_figures = utility().smoothedFigures();
        expectRight();
    }

    std::vector<FaultyCardRegistry::Request> cleanRun()
    {
        GetParam().arrange(m_machine);
        utility().registry.startRecording();
        GetParam().act(utility());
        return utility().registry.requests();
    }

    // Runs the situation with each fault at the request, then once without. Returns the number of faults that apply
    // to the request.
    int runFaults(std::size_t request, std::span<const FaultRow> rows)
    {
        const int failuresBefore = failures();
        int cells = 0;
        for (const FaultRow& row : rows) {
            const int before = failures();
            cells += runCell(request, row) ? 1 : 0;
            if (failures() != before)
                report(request, row.name);
        }
        (void)cleanRun();
        recordTicks(GetParam().ticksToSettle);
        const QStringList shown = utility().snapshot();
        if (failures() == failuresBefore && shown != m_expected) {
            if (rows.size() > 1)
                return runOneByOne(request, rows, shown);
            expectSame(m_expected, shown);
            report(request, rows.front().name);
        }
        return cells;
    }

    // Finds the fault that leaves a trace.
    int runOneByOne(std::size_t request, std::span<const FaultRow> rows, const QStringList& shown)
    {
        const int before = failures();
        int cells = 0;
        for (const FaultRow& row : rows) {
            GetParam().prepare(m_machine);
            cells += runFaults(request, std::span(&row, 1));
        }
        if (failures() == before) {
            expectSame(m_expected, shown);
            ADD_FAILURE() << "request " << request << ": only all faults together leave this trace";
        }
        return cells;
    }

    bool runCell(std::size_t request, const FaultRow& row)
    {
        GetParam().arrange(m_machine);
        FaultyCardRegistry& registry = utility().registry;
        registry.startRecording();
        registry.inject(row, request, static_cast<std::uint32_t>(request) + 1);
        GetParam().act(utility());
        if (!registry.wasInjected()) {
            registry.endFaults();
            return false;
        }
        if (const auto oid = m_catalogue[request].oid) {
            EXPECT_EQ(registry.requests()[request].oid.value_or(*oid), *oid);
        }
        expectBounded();
        if (row.isPainted)
            expectAnswering();
        const bool spoilt = wasInitialised();
        registry.endFaults();
        const bool initialisedAgain = tickUntilQuiet();
        expectRight();
        // What the initialisation of the card reads is shown until the next one.
        if (spoilt && !initialisedAgain)
            reinsert();
        return true;
    }

    // Until a tick changes nothing about the card: a change is shown at the next tick. Returns whether the card was
    // initialised.
    bool tickUntilQuiet()
    {
        bool initialised = false;
        for (int ticks = 0; ticks < maxTicksUntilQuiet; ++ticks) {
            recordTicks(1);
            initialised |= wasInitialised();
            const auto& requests = utility().registry.requests();
            if (std::none_of(requests.begin(), requests.end(),
                    [](const auto& request) { return (request.oid.value_or(0) & oidSetFlag) != 0; }))
                break;
        }
        return initialised;
    }

    void reinsert()
    {
        eject(m_machine);
        insert(utility());
        utility().tick();
    }

    void report(std::size_t request, std::string_view fault)
    {
        ADD_FAILURE() << "request " << request << ", OID " << std::hex << m_catalogue[request].oid.value_or(0) << ": "
                      << fault;
        GetParam().prepare(m_machine); // a failure must not hide behind another
        ++m_failedCells;
    }

    static int failures()
    {
        return testing::UnitTest::GetInstance()->current_test_info()->result()->total_part_count();
    }

    void expectBounded()
    {
        std::size_t others = 0;
        std::int64_t listBegin = 0;
        for (const auto& request : utility().registry.requests()) {
            EXPECT_LE(request.endMs - request.startMs, FaultyCardRegistry::limitMs);
            if (isListRequest(request)) {
                EXPECT_LE(request.endMs - listBegin, scanMs + maxListMs + FaultyCardRegistry::limitMs);
            } else {
                listBegin = request.endMs;
                ++others;
            }
        }
        EXPECT_LE(others, m_catalogue.size() + extraRequests);
        EXPECT_EQ(utility().registry.heldHandles(), 0U);
    }

    // The window reacts to the user and paints itself.
    void expectAnswering()
    {
        EXPECT_FALSE(utility().sheets.isRunning());
        QTabWidget& tabs = utility().application.window().tabView();
        for (const int tab :
            { (static_cast<int>(GetParam().page) + 1) % tabs.count(), static_cast<int>(GetParam().page) }) {
            QTest::mouseClick(tabs.tabBar(), Qt::LeftButton, {}, tabs.tabBar()->tabRect(tab).center());
            EXPECT_EQ(tabs.currentIndex(), tab);
        }
        EXPECT_FALSE(tabs.grab().isNull());
    }

    // What the window says agrees with the card.
    void expectRight()
    {
        EXPECT_EQ(G_bDeviceExist, 1);
        EXPECT_EQ(G_bDialogRunning, 0);
        EXPECT_EQ(utility().runLoop.activeIntervals().size(), 5U);
        EXPECT_EQ(utility().registry.heldHandles(), 0U);
        expectLinkShown();
        if (hasScanned()) // at every tick while a link is lost; the new list is shown at the next tick
            return;
        expectListShown();
        expectStatisticsShown();
    }

    void expectLinkShown()
    {
        const auto& peer = utility().cardState().association.peer();
        const QString status = utility().text("Status");
        const QString surveyed = utility().text("ConnectStatus");
        if (peer) {
            const QString address = macAddressText(peer->network.bssid);
            EXPECT_TRUE(status.contains(address)) << status.toStdString();
            EXPECT_TRUE(surveyed.contains(address)) << surveyed.toStdString();
        } else {
            EXPECT_EQ(status, u"Disconnected"_qs);
            EXPECT_EQ(surveyed, u"** Disconnected **"_qs);
        }
    }

    void expectListShown()
    {
        const auto& table = utility().control<TableView>("ApList");
        const auto& peer = utility().cardState().association.peer();
        int row = 0;
        int joined = -1;
        for (BssidListWalk walk(currentBssidList()); const auto entry = walk.next(); ++row) {
            const MacAddress address = entry->fixedPart().MacAddress;
            if (peer && peer->network.bssid == address)
                joined = row;
            EXPECT_TRUE(rowShows(table, row, macAddressText(address))) << row;
        }
        EXPECT_EQ(table.numberOfRows(), row);
        // The site survey probes the link for the first time one tick after the card has been initialised.
        if (!wasInitialised()) {
            EXPECT_EQ(G_bCurSelItem, joined);
        }
    }

    void recordTicks(int count)
    {
        utility().registry.startRecording();
        utility().tick(count);
    }

    // In the part of the run that is recorded.
    bool wasSent(std::uint32_t oid)
    {
        const auto& requests = utility().registry.requests();
        return std::any_of(requests.begin(), requests.end(), [oid](const auto& request) { return request.oid == oid; });
    }
    bool wasInitialised() { return wasSent(OID_802_11_NETWORK_TYPES_SUPPORTED); }
    bool hasScanned() { return wasSent(OID_802_11_BSSID_LIST); }

    static void expectSame(const QStringList& expected, const QStringList& actual)
    {
        QStringList unexpected = actual;
        QStringList missing;
        for (const QString& line : expected) {
            if (!unexpected.removeOne(line))
                missing.append(line);
        }
        EXPECT_EQ(missing.join(u'\n').toStdString(), std::string());
        EXPECT_EQ(unexpected.join(u'\n').toStdString(), std::string());
    }

    static bool rowShows(const TableView& table, int row, const QString& text)
    {
        for (int column = 0; column < table.model()->columnCount(); ++column) {
            if (table.model()->index(row, column).data().toString() == text)
                return true;
        }
        return false;
    }

    void expectStatisticsShown()
    {
        const Counters& counters = utility().cardState().counters;
        EXPECT_EQ(utility().text("FRS"), generalCounterText(counters.receivedFrames()));
        EXPECT_EQ(utility().text("FTS"), counterText(counters.statistics().TransmittedFragmentCount));
        EXPECT_EQ(utility().text("FRWCE"), counterText(counters.statistics().FCSErrorCount));
    }

    static constexpr int maxTicksUntilQuiet = 4;
    static constexpr int ticksToSmooth = 10;
    static constexpr int maxFailedCells = 3;

    Machine m_machine;
    std::vector<FaultyCardRegistry::Request> m_catalogue;
    std::set<std::uint32_t> m_leftToOthers;
    QStringList m_expected;
    QStringList m_figures;
    int m_failedCells { 0 };
};

TEST_P(FaultMatrix, IsRightAgainAfterEveryFaultOfEveryRequest)
{
    ASSERT_NO_FATAL_FAILURE(record());
    ASSERT_FALSE(m_catalogue.empty());
    int requests = 0;
    int cells = 0;
    for (std::size_t request = 0; request < m_catalogue.size() && m_failedCells < maxFailedCells; ++request) {
        if (m_leftToOthers.contains(m_catalogue[request].oid.value_or(0)))
            continue;
        ++requests;
        cells += runFaults(request, faultRows());
    }
    EXPECT_GT(cells, 0);
    recordTicks(ticksToSmooth);
    expectSame(m_figures, utility().smoothedFigures());
    std::cout << GetParam().name << ": " << requests << " requests, " << cells << " cells" << std::endl;
}

INSTANTIATE_TEST_SUITE_P(
    , FaultMatrix, testing::ValuesIn(situations()), [](const testing::TestParamInfo<Situation>& info) {
        std::string name = info.param.name;
        std::erase(name, ' ');
        return name;
    });

} // namespace
