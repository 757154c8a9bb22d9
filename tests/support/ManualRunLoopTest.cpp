#include "tests/support/ManualRunLoop.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace std::chrono_literals;

TEST(ManualRunLoop, FiresDueTimersByTimeThenBySchedulingOrder)
{
    ManualRunLoop runLoop;
    std::vector<int> fired;
    const auto a = runLoop.scheduleRepeatingTimer(2s, [&] { fired.push_back(1); });
    const auto b = runLoop.scheduleRepeatingTimer(2s, [&] { fired.push_back(2); });
    const auto c = runLoop.scheduleRepeatingTimer(500ms, [&] { fired.push_back(3); });
    runLoop.advance(1999ms);
    EXPECT_EQ(fired, (std::vector<int> { 3, 3, 3 }));
    runLoop.advance(1ms);
    EXPECT_EQ(fired, (std::vector<int> { 3, 3, 3, 1, 2, 3 }));
    EXPECT_EQ(runLoop.now(), 2s);
    EXPECT_EQ(runLoop.activeIntervals(), (std::vector<std::chrono::milliseconds> { 2s, 2s, 500ms }));
}

TEST(ManualRunLoop, DoesNotFireInvalidatedOrDestroyedTimers)
{
    ManualRunLoop runLoop;
    int fired = 0;
    std::unique_ptr<Timer> destroyed;
    const auto first = runLoop.scheduleRepeatingTimer(1s, [&] {
        ++fired;
        destroyed.reset();
    });
    destroyed = runLoop.scheduleRepeatingTimer(1s, [&] { fired += 100; });
    runLoop.advance(3s);
    EXPECT_EQ(fired, 3);
    first->invalidate();
    runLoop.advance(3s);
    EXPECT_EQ(fired, 3);
    EXPECT_TRUE(runLoop.activeIntervals().empty());
}

TEST(ManualRunLoop, FiresOtherTimersDuringACallback)
{
    ManualRunLoop runLoop;
    int outer = 0;
    int inner = 0;
    const auto first = runLoop.scheduleRepeatingTimer(1s, [&] {
        if (++outer == 1)
            runLoop.advance(2s);
    });
    const auto second = runLoop.scheduleRepeatingTimer(1s, [&] { ++inner; });
    runLoop.advance(1s);
    EXPECT_EQ(outer, 1);
    EXPECT_EQ(inner, 3);
    EXPECT_EQ(runLoop.now(), 3s);
    runLoop.advance(1s);
    EXPECT_EQ(outer, 2);
    EXPECT_EQ(inner, 4);
}

} // namespace
