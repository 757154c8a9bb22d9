#include "app/Application.h"
#include "app/shared/SharedState.h"
#include "driver/records/Oids.h"
#include "platform/SystemTickClock.h"
#include "platform/registry/SocketIORegistry.h"
#include "platform/store/WindowSettings.h"
#include "platform/ui/QtRunLoop.h"
#include "platform/ui/WindowTickClock.h"
#include "tests/support/MemoryUserDefaults.h"
#include "tests/support/RecordingAlertPanels.h"
#include "tests/support/RecordingAssertionHandler.h"
#include "tests/support/ScriptedModalSheets.h"
#include "tests/support/SimulatorThread.h"
#include "tests/support/SocketServiceDouble.h"
#include "tests/survey/InitialSurveyState.h"

#include <QApplication>
#include <QEventLoop>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <atomic>
#include <thread>

// How the whole window answers while the driver keeps it busy: for a minute of real time on the real run loop, a thread
// sends it an input event every 10 ms and measures how long each of them waits.

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using Double = SocketServiceDouble;

constexpr auto period = 60s;
constexpr auto inputInterval = 10ms;
constexpr auto atOnce = 50ms; // a person does not notice this delay

struct Response {
    double freeShare { 0 }; // of the inputs, those that were handled at once
    double longestWaitSeconds { 0 };
};

void handleEventsFor(Clock::duration time)
{
    QEventLoop loop;
    QTimer::singleShot(std::chrono::duration_cast<std::chrono::milliseconds>(time), &loop, &QEventLoop::quit);
    loop.exec();
}

Response measureResponse()
{
    std::vector<Clock::duration> waits;
    QObject window;
    std::atomic<bool> done { false };
    std::thread user([&] {
        for (auto next = Clock::now(); !done; next += inputInterval) {
            std::this_thread::sleep_until(next);
            QMetaObject::invokeMethod(
                &window, [&waits, next] { waits.push_back(Clock::now() - next); }, Qt::QueuedConnection);
        }
    });
    handleEventsFor(period);
    done = true;
    user.join();
    QCoreApplication::sendPostedEvents(&window);
    const auto free = std::count_if(waits.begin(), waits.end(), [](auto wait) { return wait <= atOnce; });
    return { static_cast<double>(free) / static_cast<double>(waits.size()),
        std::chrono::duration<double>(*std::max_element(waits.begin(), waits.end())).count() };
}

// The application over the services in one registry root.
class OpenWindow {
public:
    explicit OpenWindow(const std::string& root)
        : m_registry({ root })
    {
        m_application.awakeFromNib();
    }

    MainWindow& window() { return m_application.window(); }
    VX7100Access& adapter() { return m_application.adapter(); }

private:
    InitialSurveyState m_initialState; // for a situation that is not the first of the process
    QTemporaryDir m_home;
    WindowSettings m_settings { m_home.filePath(QStringLiteral("settings.plist")) };
    MemoryUserDefaults m_userDefaults;
    SocketIORegistry m_registry;
    SystemTickClock m_sleeper;
    WindowTickClock m_clock { m_sleeper };
    QtRunLoop m_runLoop;
    RecordingAlertPanels m_alerts;
    ScriptedModalSheets m_sheets;
    RecordingAssertionHandler m_assertions;
    Application m_application { { m_registry, m_clock, m_runLoop, m_alerts, m_sheets, m_assertions, m_userDefaults,
        m_settings, m_home.path(), m_home.path() } };
};

// A simulator whose time is the real one.
class RunningSimulator : public SimulatorThread {
public:
    RunningSimulator()
    {
        m_time.setInterval(100ms);
        QObject::connect(&m_time, &QTimer::timeout, &m_time, [this] { passTime(100); });
        m_time.start();
    }

private:
    QTimer m_time;
};

// Associates the card. Only after a link the utility scans at every probe.
const ScenarioNetwork& join(OpenWindow& open, RunningSimulator& simulator)
{
    handleEventsFor(8s);
    const auto& networks = simulator.scenario().networks;
    const auto network
        = std::find_if(networks.begin(), networks.end(), [](const auto& each) { return each.ssid == "Harbour Cafe"; });
    NDIS_802_11_SSID ssid { static_cast<std::uint32_t>(network->ssid.size()), {} };
    std::copy(network->ssid.begin(), network->ssid.end(), ssid.Ssid.begin());
    (void)setRecord(open.adapter(), OID_802_11_SSID, ssid);
    handleEventsFor(8s);
    return *network;
}

Response withRadioOff()
{
    RunningSimulator simulator;
    OpenWindow open(simulator.root());
    (void)join(open, simulator);
    open.window().findChild<QPushButton*>(QStringLiteral("Radio"))->click();
    return measureResponse();
}

Response withLostLink()
{
    RunningSimulator simulator;
    OpenWindow open(simulator.root());
    const ScenarioNetwork& network = join(open, simulator);
    simulator.run([&] { (void)simulator.service().card().removeNetwork(network.bssid, simulator.service().nowMs()); });
    handleEventsFor(8s);
    return measureResponse();
}

Response withService(const std::function<void(SocketServiceDouble&)>& script)
{
    const QTemporaryDir root;
    QDir(root.path()).mkdir(QStringLiteral("Pellvane"));
    QFile::setPermissions(
        root.filePath(QStringLiteral("Pellvane")), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    SocketServiceDouble service(root.filePath(QStringLiteral("Pellvane/card")).toStdString());
    script(service);
    (void)service.start();
    OpenWindow open(root.path().toStdString());
    return measureResponse();
}

Response withSilentService()
{
    return withService(
        [](SocketServiceDouble& service) { service.onOpen([](const auto&) { return Double::silence(); }); });
}

Response withServiceThatOnlyOpens()
{
    return withService([](SocketServiceDouble& service) {
        service.onStructureCall([](const auto&) { return Double::silence(); });
        service.onScalarCall([](const auto&) { return Double::silence(); });
    });
}

Response withSlowService()
{
    const auto slow = [](const auto&) {
        Double::Reaction reaction = Double::answer();
        reaction.delay = 1500ms;
        return reaction;
    };
    return withService([slow](SocketServiceDouble& service) {
        service.onOpen(slow);
        service.onStructureCall(slow);
        service.onScalarCall(slow);
    });
}

// Each situation is measured once, for both of its figures.
template <Response (*situation)()> const Response& response()
{
    static const Response measured = situation();
    G_bRadio = 1;
    return measured;
}

template <Response (*situation)()> void FreeShare(benchmark::State& state)
{
    for ([[maybe_unused]] auto _ : state)
        state.SetIterationTime(response<situation>().freeShare);
}

template <Response (*situation)()> void LongestWait(benchmark::State& state)
{
    for ([[maybe_unused]] auto _ : state)
        state.SetIterationTime(response<situation>().longestWaitSeconds);
}

void One(benchmark::State& state)
{
    for ([[maybe_unused]] auto _ : state)
        state.SetIterationTime(1);
}

template <Response (*situation)()> void add(const std::string& name)
{
    for (auto* const figure : { benchmark::RegisterBenchmark(("FreeShare/" + name).c_str(), FreeShare<situation>),
             benchmark::RegisterBenchmark(("LongestWait/" + name).c_str(), LongestWait<situation>) })
        figure->UseManualTime()->Iterations(1)->Repetitions(1)->Unit(benchmark::kMillisecond);
}

BENCHMARK(One)->UseManualTime()->Iterations(1)->Repetitions(1);

} // namespace

int main(int argumentCount, char** arguments)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argumentCount, arguments);
    add<withRadioOff>("radio-off");
    add<withLostLink>("lost-link");
    add<withSilentService>("silent-service");
    add<withServiceThatOnlyOpens>("open-only-service");
    add<withSlowService>("slow-service");
    benchmark::Initialize(&argumentCount, arguments);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
