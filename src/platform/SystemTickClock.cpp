#include "platform/SystemTickClock.h"

#include <cerrno>

#include <time.h>

void SystemTickClock::Delay(std::uint32_t numTicks)
{
    constexpr std::int64_t nanosecondsPerSecond = 1'000'000'000;
    timespec until {};
    (void)::clock_gettime(CLOCK_MONOTONIC, &until);
    const std::int64_t nanoseconds = until.tv_nsec + numTicks % ticksPerSecond * nanosecondsPerSecond / ticksPerSecond;
    until.tv_sec += static_cast<time_t>(numTicks / ticksPerSecond + nanoseconds / nanosecondsPerSecond);
    until.tv_nsec = static_cast<long>(nanoseconds % nanosecondsPerSecond);
    while (::clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &until, nullptr) == EINTR) { }
}

std::chrono::nanoseconds SystemTickClock::elapsed() const
{
    return std::chrono::steady_clock::now().time_since_epoch();
}
