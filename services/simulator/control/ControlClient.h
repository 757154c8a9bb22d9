#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

// Sends one line to a control socket and waits for the line that answers it. On failure returns std::nullopt and sets
// error to the reason.
[[nodiscard]] std::optional<QByteArray> callControl(const QString& socketPath, const QByteArray& line, QString& error);
