#pragma once

#include <QString>

#include <optional>

class TickClock;

// Who is logged in at the console.
class ConsoleUser {
public:
    virtual ~ConsoleUser() = default;

    // The user's name, nothing when nobody is logged in.
    [[nodiscard]] std::optional<QString> CopyCurrentConsoleUsername();
    // Writes "Current User: \t" to standard output each time it is asked.
    [[nodiscard]] bool ConsoleUserIsLoggedIn();

protected:
    [[nodiscard]] virtual std::optional<QString> SCDynamicStoreCopyConsoleUser() = 0;
};

// Returns once somebody is logged in, asking again every 3 ticks: at a login window it waits for ever.
void waitForConsoleUser(ConsoleUser& consoleUser, TickClock& clock);
