#pragma once

#include <QString>

#include <optional>

class TickClock;

// The user who is logged in at the console.
class ConsoleUser {
public:
    virtual ~ConsoleUser() = default;

    // The user's name; std::nullopt if no user is logged in.
    [[nodiscard]] std::optional<QString> CopyCurrentConsoleUsername();
    // Writes "Current User: \t" to standard output on each call.
    [[nodiscard]] bool ConsoleUserIsLoggedIn();

protected:
    [[nodiscard]] virtual std::optional<QString> SCDynamicStoreCopyConsoleUser() = 0;
};

// Returns once a user is logged in. Polls every 3 ticks, without a time limit: at a login window it just waits.
void waitForConsoleUser(ConsoleUser& consoleUser, TickClock& clock);
