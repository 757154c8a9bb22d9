#pragma once

#include "platform/ConsoleUser.h"

#include <QDBusConnection>

#include <chrono>

class QDBusMessage;

// The console user according to logind (org.freedesktop.login1): the user of an active session of class "user", local
// or remote; sessions at a seat are preferred. Without logind, the owner of this process.
class LogindConsoleUser final : public ConsoleUser {
public:
    // callTimeout applies to each D-Bus call. If logind runs but does not answer, no user counts as logged in.
    explicit LogindConsoleUser(
        QDBusConnection systemBus, std::chrono::milliseconds callTimeout = std::chrono::seconds(2));

protected:
    [[nodiscard]] std::optional<QString> SCDynamicStoreCopyConsoleUser() override;

private:
    [[nodiscard]] std::optional<QString> activeUser(const QDBusMessage& sessionList) const;
    [[nodiscard]] bool isActiveUserSession(const QString& sessionPath) const;
    [[nodiscard]] bool isLogindRunning() const;
    [[nodiscard]] QDBusMessage call(const QDBusMessage& message) const;

    QDBusConnection m_bus;
    int m_callTimeoutMs;
};

// The name of the effective user, or its user ID if it has no name.
[[nodiscard]] QString processOwnerName();
