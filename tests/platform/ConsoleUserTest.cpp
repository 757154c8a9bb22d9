#include "platform/ConsoleUser.h"

#include "tests/support/RecordingTickClock.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// No user is logged in until the given number of queries.
class LateConsoleUser final : public ConsoleUser {
public:
    explicit LateConsoleUser(int queriesBefore)
        : m_queriesLeft(queriesBefore)
    {
    }

protected:
    [[nodiscard]] std::optional<QString> SCDynamicStoreCopyConsoleUser() override
    {
        return m_queriesLeft-- > 0 ? std::nullopt : std::optional(u"mona"_qs);
    }

private:
    int m_queriesLeft;
};

TEST(ConsoleUser, IsPolledEveryThreeTicksUntilLoggedIn)
{
    LateConsoleUser consoleUser(4);
    RecordingTickClock clock;
    testing::internal::CaptureStdout();
    waitForConsoleUser(consoleUser, clock);
    EXPECT_EQ(clock.delays, (std::vector<std::uint32_t> { 3, 3, 3, 3 }));
    std::string lines;
    for (int query = 0; query < 5; ++query)
        lines += "Current User: \t";
    EXPECT_EQ(testing::internal::GetCapturedStdout(), lines);
}

TEST(ConsoleUser, IsNotWaitedForIfAlreadyLoggedIn)
{
    LateConsoleUser consoleUser(0);
    RecordingTickClock clock;
    testing::internal::CaptureStdout();
    waitForConsoleUser(consoleUser, clock);
    EXPECT_TRUE(clock.delays.empty());
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Current User: \t");
}

TEST(ConsoleUser, ReportsNameIfLoggedIn)
{
    LateConsoleUser consoleUser(2);
    testing::internal::CaptureStdout();
    EXPECT_FALSE(consoleUser.ConsoleUserIsLoggedIn());
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Current User: \t");
    EXPECT_EQ(consoleUser.CopyCurrentConsoleUsername(), std::nullopt);
    EXPECT_EQ(consoleUser.CopyCurrentConsoleUsername(), u"mona"_qs);
}

} // namespace
