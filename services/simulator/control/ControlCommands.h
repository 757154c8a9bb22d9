#pragma once

#include "services/simulator/control/CommandWords.h"
#include "services/simulator/service/SimulatorService.h"

#include <QByteArray>
#include <QString>

#include <span>
#include <string_view>

struct CommandOutcome {
    QString error; // empty on success
    bool isMisuse { false }; // the words do not form a command
};

// What pellvane-simctl does with a word that names a file: the path is the caller's, but the simulator may run in
// another directory.
enum class FileArgument {
    None,
    Contents, // replaces it by "--toml" and the contents of the file; "-" is standard input
    Path, // makes it absolute
};

// A command of the control protocol. The help, the man page and docs/simulator.md list the commands of this table.
struct ControlCommand {
    std::string_view name;
    std::string_view arguments; // as the help shows them
    std::string_view summary;
    qsizetype minArguments; // positional ones; a FILE that becomes --toml does not count
    qsizetype maxArguments;
    std::span<const std::string_view> options; // those that the command knows
    CommandOutcome (*run)(SimulatorService&, const CommandWords&);
    FileArgument file { FileArgument::None };
    qsizetype fileWord { 0 }; // index of the word; the command's name is word 0
};

[[nodiscard]] std::span<const ControlCommand> controlCommands();
// Returns nullptr for an unknown name.
[[nodiscard]] const ControlCommand* findControlCommand(const QString& name);

// Executes one line of the control protocol (docs/simulator.md), a JSON array of the words of a command, and returns
// the answer without a line feed: {"ok":true}, with "status" for the command of that name, or {"ok":false,"error":"…"},
// with "usage":true if the words do not form a command. A command that fails changes nothing.
[[nodiscard]] QByteArray answerControlLine(SimulatorService& service, const QByteArray& line);
