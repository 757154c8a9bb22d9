#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>

// A command line of pellvane-sim, read.
struct SimulatorOptions {
    QString scenarioFile; // empty: the built-in scenario
    QString instance;
    QString root;
    QString controlPath;
    QString recordFile; // empty: nothing is recorded
    std::uint64_t seed { 0 };
    bool isQuiet { false };
    bool startsEjected { false };
};

// What the command line comes to: options, or a text to print before ending.
struct SimulatorCommandLine {
    std::optional<SimulatorOptions> options;
    QString text;
    bool isError { false };
};

// The arguments with the program's name in front.
[[nodiscard]] SimulatorCommandLine readSimulatorArguments(const QStringList& arguments);
