#include "services/host/TerminationSignals.h"
#include "services/simulator/SimulatorOptions.h"
#include "services/simulator/control/ControlCommands.h"
#include "services/simulator/control/ControlServer.h"
#include "services/simulator/scenario/DefaultScenario.h"
#include "services/simulator/scenario/JoinHints.h"
#include "services/simulator/service/SimulatorService.h"

#include <QCoreApplication>

#include <chrono>
#include <cstdio>
#include <system_error>

namespace {

enum ExitCode {
    Ended = 0,
    Failed = 1,
    Usage = 2,
};

int fail(const std::string& error)
{
    (void)std::fprintf(stderr, "pellvane-sim: %s\n", error.c_str());
    return Failed;
}

int fail(const std::string& what, std::error_code error)
{
    return fail(what + ": " + error.message());
}

std::int64_t steadyMs()
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

std::string describe(const std::string& file, const ScenarioError& error)
{
    std::string text = file;
    if (error.line != 0)
        text += ':' + std::to_string(error.line) + ':' + std::to_string(error.column);
    return text + ": " + error.text;
}

void printIntroduction(const SimulatorService& service, const SimulatorOptions& options, const Scenario& scenario)
{
    (void)std::printf("card:    %s\ncontrol: %s\n\n%s\n", service.socketPath().c_str(),
        options.controlPath.toStdString().c_str(), joinHints(scenario).c_str());
}

int runSimulator(const SimulatorOptions& options, const Scenario& scenario)
{
    SimulatorService service(
        scenario, options.seed, options.root.toStdString(), options.instance.toStdString(), steadyMs);
    if (!options.recordFile.isEmpty()) {
        if (const auto error = service.recorder().start(options.recordFile.toStdString()))
            return fail(options.recordFile.toStdString(), error);
    }
    ControlServer control([&service](const QByteArray& line) { return answerControlLine(service, line); });
    if (const auto error = control.listen(options.controlPath.toStdString()))
        return fail(options.controlPath.toStdString(), error);
    if (!options.startsEjected) {
        if (const auto error = service.insert())
            return fail(service.socketPath(), error);
    }

    if (!options.isQuiet)
        printIntroduction(service, options, scenario);
    // Scripts wait for this line: from now on the card can be found and pellvane-simctl is answered.
    (void)std::puts("ready");
    (void)std::fflush(stdout);
    const int result = QCoreApplication::exec();
    service.eject();
    return result;
}

} // namespace

int main(int argumentCount, char** arguments)
{
    const QCoreApplication application(argumentCount, arguments);
    const SimulatorCommandLine commandLine = readSimulatorArguments(QCoreApplication::arguments());
    if (!commandLine.options) {
        (void)std::fputs(commandLine.text.toLocal8Bit().constData(), commandLine.isError ? stderr : stdout);
        return commandLine.isError ? Usage : Ended;
    }
    const TerminationSignals signals([] { QCoreApplication::quit(); });

    const SimulatorOptions& options = *commandLine.options;
    const ScenarioResult scenario = options.scenarioFile.isEmpty() ? parseScenario(defaultScenarioText())
                                                                   : loadScenario(options.scenarioFile.toStdString());
    if (!scenario.scenario)
        return fail(describe(
            options.scenarioFile.isEmpty() ? "built-in scenario" : options.scenarioFile.toStdString(), scenario.error));
    return runSimulator(options, *scenario.scenario);
}
