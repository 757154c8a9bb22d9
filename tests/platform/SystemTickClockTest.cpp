#include "platform/SystemTickClock.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <thread>

#include <pthread.h>

namespace {

using namespace std::chrono_literals;

std::chrono::nanoseconds timeOf(std::uint32_t ticks)
{
    SystemTickClock clock;
    const auto begin = std::chrono::steady_clock::now();
    clock.Delay(ticks);
    return std::chrono::steady_clock::now() - begin;
}

TEST(SystemTickClock, TickIsSixtiethOfSecond)
{
    EXPECT_GE(timeOf(3), 50ms);
    EXPECT_LT(timeOf(3), 1s);
}

TEST(SystemTickClock, ZeroTicksDoNotWait)
{
    EXPECT_LT(timeOf(0), 50ms);
}

TEST(SystemTickClock, SignalsDoNotShortenWait)
{
    struct sigaction ignoring { };
    struct sigaction before { };
    static std::atomic<int> signals = 0;
    signals = 0;
    ignoring.sa_handler = [](int) { ++signals; };
    ASSERT_EQ(sigaction(SIGUSR1, &ignoring, &before), 0);
    std::atomic<bool> done = false;
    std::thread sender([&done, waiting = pthread_self()] {
        while (!done) {
            pthread_kill(waiting, SIGUSR1);
            std::this_thread::yield();
        }
    });
    EXPECT_GE(timeOf(6), 100ms);
    done = true;
    sender.join();
    EXPECT_GT(signals, 0);
    ASSERT_EQ(sigaction(SIGUSR1, &before, nullptr), 0);
}

} // namespace
