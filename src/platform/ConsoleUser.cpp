#include "platform/ConsoleUser.h"

#include "platform/TickClock.h"

#include <cstdio>

std::optional<QString> ConsoleUser::CopyCurrentConsoleUsername()
{
    return SCDynamicStoreCopyConsoleUser();
}

bool ConsoleUser::ConsoleUserIsLoggedIn()
{
    (void)std::fputs("Current User: \t", stdout);
    (void)std::fflush(stdout);
    return CopyCurrentConsoleUsername().has_value();
}

void waitForConsoleUser(ConsoleUser& consoleUser, TickClock& clock)
{
    constexpr std::uint32_t pollIntervalTicks = 3;
    while (!consoleUser.ConsoleUserIsLoggedIn())
        clock.Delay(pollIntervalTicks);
}
