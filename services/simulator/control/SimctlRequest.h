#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <optional>

// A command line of pellvane-simctl, read.
struct SimctlRequest {
    QString controlPath; // empty: the instance's own
    QString instance;
    QJsonObject command;
};

// What --help prints.
[[nodiscard]] QString simctlHelp();

// Reads the arguments behind the program's name. Nothing, with the reason in error, for arguments that make no
// request. The network of add-network is read from its file here ("-" is standard input), and the file of a recording
// is made absolute, so that both mean what they mean to the caller.
[[nodiscard]] std::optional<SimctlRequest> readSimctlArguments(const QStringList& arguments, QString& error);
