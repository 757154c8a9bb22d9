#pragma once

#include <QString>
#include <QStringList>

#include <optional>

// A parsed command line of pellvane-simctl.
struct SimctlRequest {
    QString controlPath;
    QStringList words; // of the command, for the simulator to interpret
};

// What --help prints.
[[nodiscard]] QString simctlHelp();

// Parses the arguments after the program name. Only --instance, --control and files are interpreted here; the simulator
// interprets the command. On failure returns std::nullopt and sets error.
[[nodiscard]] std::optional<SimctlRequest> readSimctlArguments(const QStringList& arguments, QString& error);
