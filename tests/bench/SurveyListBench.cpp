#include "app/shared/SharedState.h"
#include "driver/VX7100Access.h"
#include "survey/ui/SiteSurveyPageController.h"
#include "tests/support/BssidListBuilder.h"
#include "tests/support/ManualRunLoop.h"
#include "tests/support/RecordingAlertPanels.h"
#include "tests/support/RecordingAssertionHandler.h"
#include "tests/support/RecordingIORegistry.h"
#include "tests/support/RecordingTickClock.h"
#include "tests/support/ScriptedModalSheets.h"

#include <QApplication>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <string>

// A refresh of the network list: parsing, building the rows and painting them in a window of typical size.

namespace {

constexpr std::uint32_t fullListEntries = 500; // 131 bytes each: 65,504 of the list's 65,536 bytes
constexpr std::uint32_t smallListEntries = 50;

// Lists with different salts differ in every row, so that a refresh has to update all rows.
BssidListBuffer makeList(std::uint32_t entries, std::uint32_t salt)
{
    std::vector<EntryBuilder> networks;
    for (std::uint32_t number = 0; number < entries; ++number) {
        EntryBuilder network(
            "Network " + std::to_string(number * 7919 % 1000 + salt), static_cast<std::uint8_t>(number % 256));
        network.fixedPart.Rssi = -40 - static_cast<std::int32_t>((number + salt) % 50);
        network.fixedPart.Privacy = number % 2;
        network.elements = bytesOf({ 3, 1, 1 });
        networks.push_back(network);
    }
    const Bytes bytes = bssidList(networks);
    BssidListBuffer buffer {};
    std::copy(bytes.begin(), bytes.end(), buffer.begin());
    return buffer;
}

class VisiblePage {
public:
    VisiblePage()
    {
        G_bDeviceExist = 1;
        m_page.awakeFromNib();
        m_page.resize(1000, 700);
        m_page.show();
        QCoreApplication::processEvents();
    }

    void refresh(const BssidListBuffer& list)
    {
        *G_pBssidList = list;
        m_page.RefreshAPList();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        QCoreApplication::processEvents();
        m_page.repaint();
    }

    [[nodiscard]] int rowCount() const { return m_page.numberOfRowsInTableView(); }

private:
    RecordingIORegistry m_registry;
    RecordingTickClock m_clock;
    RecordingAlertPanels m_alerts;
    RecordingAssertionHandler m_assertions;
    ManualRunLoop m_runLoop;
    VX7100Access m_adapter { m_registry, m_clock, m_alerts };
    ScriptedModalSheets m_sheets;
    SiteSurveyPageController m_page { m_adapter, m_runLoop, m_assertions, m_alerts, m_sheets };
};

void refreshLists(benchmark::State& state, std::uint32_t entries)
{
    const std::array lists { makeList(entries, 0), makeList(entries, 1) };
    G_pBssidList = std::make_unique<BssidListBuffer>();
    VisiblePage page;
    std::size_t turn = 0;
    for ([[maybe_unused]] auto _ : state)
        page.refresh(lists[turn++ % lists.size()]);
    if (page.rowCount() != static_cast<int>(entries))
        state.SkipWithError("the page does not show the whole list");
}

void FullListRefresh(benchmark::State& state)
{
    refreshLists(state, fullListEntries);
}

void SmallListRefresh(benchmark::State& state)
{
    refreshLists(state, smallListEntries);
}

// The limit of a refresh: one frame of a 60 Hz display.
void OneFrame(benchmark::State& state)
{
    for ([[maybe_unused]] auto _ : state)
        state.SetIterationTime(1.0 / 60);
}

BENCHMARK(FullListRefresh)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(SmallListRefresh)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(OneFrame)->Unit(benchmark::kMillisecond)->UseManualTime();

} // namespace

int main(int argumentCount, char** arguments)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argumentCount, arguments);
    benchmark::Initialize(&argumentCount, arguments);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
