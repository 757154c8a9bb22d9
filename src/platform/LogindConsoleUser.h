#pragma once

#include "platform/ConsoleUser.h"

#include <QDBusConnection>

#include <chrono>

class QDBusMessage;

// The console user as logind (org.freedesktop.login1) knows it: the user of an active session of a person, local or
// remote, one at a seat before others. Where no logind runs, the user who owns this process.
class LogindConsoleUser final : public ConsoleUser {
public:
    // callTimeout bounds each call over the bus. A logind that runs but does not answer knows of nobody.
    explicit LogindConsoleUser(
        QDBusConnection systemBus, std::chrono::milliseconds callTimeout = std::chrono::seconds(2));

protected:
    [[nodiscard]] std::optional<QString> SCDynamicStoreCopyConsoleUser() override;

private:
    [[nodiscard]] std::optional<QString> activePerson(const QDBusMessage& sessionList) const;
    [[nodiscard]] bool isActiveSessionOfPerson(const QString& sessionPath) const;
    [[nodiscard]] bool logindRuns() const;
    [[nodiscard]] QDBusMessage call(const QDBusMessage& message) const;

    QDBusConnection m_bus;
    int m_callTimeoutMs;
};

// The name of the effective user, the number as text when it has no name.
[[nodiscard]] QString processOwnerName();
