#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>

// The options of pellvane-sim.
struct SimulatorOptions {
    QString scenarioFile; // empty: the built-in scenario
    QString instance;
    QString root;
    QString controlPath;
    QString recordFile; // empty: no recording
    std::uint64_t seed { 0 };
    bool isQuiet { false };
    bool startsEjected { false };
};

// The result of parsing the command line: options, or a text to print before exiting.
struct SimulatorCommandLine {
    std::optional<SimulatorOptions> options;
    QString text;
    bool isError { false };
};

// The arguments include the program name.
[[nodiscard]] SimulatorCommandLine readSimulatorArguments(const QStringList& arguments);
