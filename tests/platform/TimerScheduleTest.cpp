#include "platform/TimerSchedule.h"

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;

constexpr auto interval = 2000ms;

TEST(TimerSchedule, FiresAtMultiplesOfTheInterval)
{
    EXPECT_EQ(nextFiringTime(2000ms, interval, 2000ms, 2010ms), 4000ms);
    EXPECT_EQ(nextFiringTime(4000ms, interval, 4003ms, 4003ms), 6000ms);
}

TEST(TimerSchedule, SkipsTheTimesThatPassedDuringTheCallback)
{
    EXPECT_EQ(nextFiringTime(2000ms, interval, 2000ms, 4020ms), 6000ms);
    EXPECT_EQ(nextFiringTime(2000ms, interval, 2000ms, 9999ms), 10'000ms);
    EXPECT_EQ(nextFiringTime(2000ms, interval, 2000ms, 10'000ms), 12'000ms);
}

TEST(TimerSchedule, KeepsItsMultiplesAfterALateFiring)
{
    EXPECT_EQ(nextFiringTime(2000ms, interval, 3500ms, 3500ms), 4000ms);
    EXPECT_EQ(nextFiringTime(2000ms, interval, 4100ms, 4100ms), 6000ms);
}

TEST(TimerSchedule, DoesNotFireTwiceInARowAfterALateFiring)
{
    EXPECT_EQ(nextFiringTime(2000ms, interval, 3990ms, 3990ms), 6000ms);
    EXPECT_EQ(nextFiringTime(2000ms, interval, 3501ms, 3501ms), 6000ms);
}

} // namespace
