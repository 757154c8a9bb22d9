#include "platform/ui/QtRunLoop.h"

#include <QEventLoop>
#include <QTest>
#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace std::chrono_literals;

TEST(QtRunLoop, FiresTimersInSchedulingOrder)
{
    QtRunLoop runLoop;
    std::vector<int> fired;
    const auto first = runLoop.scheduleRepeatingTimer(5ms, [&fired] { fired.push_back(1); });
    const auto second = runLoop.scheduleRepeatingTimer(5ms, [&fired] { fired.push_back(2); });
    const auto third = runLoop.scheduleRepeatingTimer(5ms, [&fired] { fired.push_back(3); });
    ASSERT_TRUE(QTest::qWaitFor([&fired] { return fired.size() >= 9; }));
    for (std::size_t turn = 0; turn < 9; ++turn)
        EXPECT_EQ(fired[turn], static_cast<int>(turn % 3) + 1);
}

TEST(QtRunLoop, DoesNotFireTimerWithinItsCallback)
{
    QtRunLoop runLoop;
    int depth = 0;
    int maxDepth = 0;
    int others = 0;
    const auto nested = runLoop.scheduleRepeatingTimer(1ms, [&] {
        maxDepth = std::max(maxDepth, ++depth);
        const int before = others;
        EXPECT_TRUE(QTest::qWaitFor([&] { return others >= before + 3; }));
        --depth;
    });
    const auto other = runLoop.scheduleRepeatingTimer(1ms, [&others] { ++others; });
    ASSERT_TRUE(QTest::qWaitFor([&] { return others > 10; }));
    EXPECT_EQ(maxDepth, 1);
}

TEST(QtRunLoop, TimerMayBeInvalidatedOrDestroyedInItsCallback)
{
    QtRunLoop runLoop;
    int invalidatedFired = 0;
    int destroyedFired = 0;
    std::unique_ptr<Timer> invalidated;
    std::unique_ptr<Timer> destroyed;
    invalidated = runLoop.scheduleRepeatingTimer(1ms, [&] {
        ++invalidatedFired;
        invalidated->invalidate();
    });
    destroyed = runLoop.scheduleRepeatingTimer(1ms, [&] {
        destroyed.reset();
        ++destroyedFired;
    });
    int witness = 0;
    const auto other = runLoop.scheduleRepeatingTimer(1ms, [&witness] { ++witness; });
    ASSERT_TRUE(QTest::qWaitFor([&witness] { return witness > 5; }));
    EXPECT_EQ(invalidatedFired, 1);
    EXPECT_EQ(destroyedFired, 1);
}

TEST(QtRunLoop, MayBeDestroyedBeforeItsTimers)
{
    auto runLoop = std::make_unique<QtRunLoop>();
    const auto timer = runLoop->scheduleRepeatingTimer(1ms, [] { FAIL() << "fired without a run loop"; });
    runLoop.reset();
    QtRunLoop other;
    int witness = 0;
    const auto witnessTimer = other.scheduleRepeatingTimer(1ms, [&witness] { ++witness; });
    EXPECT_TRUE(QTest::qWaitFor([&witness] { return witness > 5; }));
}

void blockFor(std::chrono::milliseconds time)
{
    const auto end = std::chrono::steady_clock::now() + time;
    while (std::chrono::steady_clock::now() < end) { }
}

TEST(QtRunLoop, SkipsTheFiringTimesThatPassDuringACallback)
{
    QtRunLoop runLoop;
    const auto start = std::chrono::steady_clock::now();
    std::vector<std::chrono::nanoseconds> fired;
    const auto timer = runLoop.scheduleRepeatingTimer(40ms, [&] {
        fired.push_back(std::chrono::steady_clock::now() - start);
        blockFor(41ms);
    });
    ASSERT_TRUE(QTest::qWaitFor([&fired] { return fired.size() >= 3; }));
    // Firing at once again would leave the event loop no time between two callbacks.
    for (std::size_t turn = 1; turn < fired.size(); ++turn)
        EXPECT_GT(fired[turn] - fired[turn - 1], 60ms);
}

TEST(QtRunLoop, FiresEveryTimerAfterABlockOnceAndInOrder)
{
    QtRunLoop runLoop;
    std::vector<int> fired;
    const auto blocking = runLoop.scheduleRepeatingTimer(40ms, [&] {
        fired.push_back(0);
        if (fired.size() == 1)
            blockFor(130ms);
    });
    const auto second = runLoop.scheduleRepeatingTimer(40ms, [&fired] { fired.push_back(1); });
    const auto third = runLoop.scheduleRepeatingTimer(40ms, [&fired] { fired.push_back(2); });
    ASSERT_TRUE(QTest::qWaitFor([&fired] { return fired.size() >= 6; }));
    fired.resize(6);
    EXPECT_EQ(fired, (std::vector { 0, 1, 2, 0, 1, 2 }));
}

} // namespace
