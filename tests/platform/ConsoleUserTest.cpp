#include "platform/ConsoleUser.h"

#include "tests/support/RecordingTickClock.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// Nobody is logged in until the given number of questions has been asked.
class LateConsoleUser final : public ConsoleUser {
public:
    explicit LateConsoleUser(int questionsBefore)
        : m_questionsLeft(questionsBefore)
    {
    }

protected:
    [[nodiscard]] std::optional<QString> SCDynamicStoreCopyConsoleUser() override
    {
        return m_questionsLeft-- > 0 ? std::nullopt : std::optional(u"mona"_qs);
    }

private:
    int m_questionsLeft;
};

TEST(ConsoleUser, IsAskedAgainEveryThreeTicksUntilSomebodyIsLoggedIn)
{
    LateConsoleUser consoleUser(4);
    RecordingTickClock clock;
    testing::internal::CaptureStdout();
    waitForConsoleUser(consoleUser, clock);
    EXPECT_EQ(clock.delays, (std::vector<std::uint32_t> { 3, 3, 3, 3 }));
    std::string lines;
    for (int question = 0; question < 5; ++question)
        lines += "Current User: \t";
    EXPECT_EQ(testing::internal::GetCapturedStdout(), lines);
}

TEST(ConsoleUser, WhoIsThereAlreadyWaitsForNothing)
{
    LateConsoleUser consoleUser(0);
    RecordingTickClock clock;
    testing::internal::CaptureStdout();
    waitForConsoleUser(consoleUser, clock);
    EXPECT_TRUE(clock.delays.empty());
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Current User: \t");
}

TEST(ConsoleUser, TellsTheNameAndWhetherThereIsOne)
{
    LateConsoleUser consoleUser(2);
    testing::internal::CaptureStdout();
    EXPECT_FALSE(consoleUser.ConsoleUserIsLoggedIn());
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Current User: \t");
    EXPECT_EQ(consoleUser.CopyCurrentConsoleUsername(), std::nullopt);
    EXPECT_EQ(consoleUser.CopyCurrentConsoleUsername(), u"mona"_qs);
}

} // namespace
