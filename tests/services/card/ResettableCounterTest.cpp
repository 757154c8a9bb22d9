#include "services/card/ResettableCounter.h"

#include <gtest/gtest.h>

#include <cstdint>

TEST(ResettableCounter, CountsFromTheFirstReading)
{
    ResettableCounter<std::uint64_t> counter;
    counter.follow(1000);
    EXPECT_EQ(counter.value(), 0U);
    counter.follow(1003);
    EXPECT_EQ(counter.value(), 3U);
}

TEST(ResettableCounter, ResetCountsFromTheLatestReading)
{
    ResettableCounter<std::uint64_t> counter;
    counter.follow(10);
    counter.follow(15);
    counter.reset();
    EXPECT_EQ(counter.value(), 0U);
    counter.follow(17);
    EXPECT_EQ(counter.value(), 2U);
}

TEST(ResettableCounter, NeverRunsBackwardsWhenItsSourceRestarts)
{
    ResettableCounter<std::uint64_t> counter;
    counter.follow(10);
    counter.follow(15);
    counter.follow(2);
    EXPECT_EQ(counter.value(), 7U);
    counter.follow(4);
    EXPECT_EQ(counter.value(), 9U);
}

TEST(ResettableCounter, AddsUpFractions)
{
    ResettableCounter<double> counter;
    counter.add(0.25);
    counter.add(0.5);
    EXPECT_EQ(counter.value(), 0.75);
}
