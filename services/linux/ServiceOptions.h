#pragma once

#include <QString>
#include <QStringList>

#include <optional>

struct ServiceOptions {
    QString interfaceName; // empty: every wireless interface
    QString root;
    bool isForeground { false };
};

struct ServiceCommandLine {
    std::optional<ServiceOptions> options; // std::nullopt: print the text and end
    QString text;
    bool isError { false };
};

[[nodiscard]] ServiceCommandLine readServiceArguments(const QStringList& arguments);
