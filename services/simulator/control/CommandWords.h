#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

#include <optional>
#include <span>
#include <string_view>

// The words after a command's name, split into positional arguments and options.
struct CommandWords {
    QStringList arguments;
    QMap<QString, QString> options; // name with its hyphens → value
};

// Every option starts with "--" and takes a value, as the next word or after "=". Returns std::nullopt and sets error
// for an option that is unknown, given twice, or without a value.
[[nodiscard]] std::optional<CommandWords> splitWords(
    const QStringList& words, std::span<const std::string_view> knownOptions, QString& error);
