#include "survey/connection/JoinProgress.h"

#include <gtest/gtest.h>

namespace {

const QString connecting = QStringLiteral("Connecting to “home”…");
const QString failed
    = QStringLiteral("No connection to “home” after 10 seconds. The key may be wrong, or the network out of range.");

constexpr JoinRequirements withKey { .key = true };

TEST(JoinProgress, IsEmptyBeforeAConnection)
{
    JoinProgress progress;
    EXPECT_TRUE(progress.text().isEmpty());
    progress.tick(false, false);
    EXPECT_TRUE(progress.text().isEmpty());
}

TEST(JoinProgress, NamesTheNetworkUntilTheLinkIsUp)
{
    JoinProgress progress;
    progress.begin(QStringLiteral("home"), withKey);
    EXPECT_EQ(progress.text(), connecting);
    progress.tick(false, false);
    EXPECT_EQ(progress.text(), connecting);
    progress.tick(true, false);
    EXPECT_TRUE(progress.text().isEmpty());
}

TEST(JoinProgress, PreviousLinkDoesNotCountAsTheNewOne)
{
    JoinProgress progress;
    progress.begin(QStringLiteral("home"), withKey);
    progress.tick(true, false); // probed before this tick sent the connection to the card
    EXPECT_EQ(progress.text(), connecting);
}

TEST(JoinProgress, WaitsForEarlierTasks)
{
    JoinProgress progress;
    progress.begin(QStringLiteral("home"), withKey);
    progress.tick(true, true); // the tick ran a rescan
    progress.tick(true, false); // this tick's probe still saw the previous link
    EXPECT_EQ(progress.text(), connecting);
    for (int tick = 0; tick < 5; ++tick)
        progress.tick(false, false);
    EXPECT_EQ(progress.text(), failed);
}

TEST(JoinProgress, PlaceholderInANameIsNotSubstituted)
{
    JoinProgress progress;
    progress.begin(QStringLiteral("%1%2"), withKey);
    EXPECT_EQ(progress.text(), QStringLiteral("Connecting to “%1%2”…"));
    for (int tick = 0; tick < 6; ++tick)
        progress.tick(false, false);
    EXPECT_TRUE(progress.text().startsWith(QStringLiteral("No connection to “%1%2” after 10 seconds.")));
}

TEST(JoinProgress, FailsAfterFiveTicksAndRecoversWithTheLink)
{
    JoinProgress progress;
    progress.begin(QStringLiteral("home"), withKey);
    for (int tick = 0; tick < 5; ++tick) {
        progress.tick(false, false);
        EXPECT_EQ(progress.text(), connecting);
    }
    progress.tick(false, false);
    EXPECT_EQ(progress.text(), failed);
    progress.tick(false, false);
    EXPECT_EQ(progress.text(), failed);
    progress.tick(true, false);
    EXPECT_TRUE(progress.text().isEmpty());
}

TEST(JoinProgress, FailureNamesOnlyReasonsThatCanApply)
{
    const auto failure = [](const JoinRequirements& requirements) {
        JoinProgress progress;
        progress.begin(QStringLiteral("home"), requirements);
        for (int tick = 0; tick < 6; ++tick)
            progress.tick(false, false);
        return progress.text();
    };
    for (const bool key : { false, true }) {
        for (const bool adHoc : { false, true }) {
            for (const bool typedName : { false, true }) {
                const QString text = failure({ .key = key, .typedName = typedName, .adHoc = adHoc });
                EXPECT_EQ(text.contains(QStringLiteral(" key ")), key);
                EXPECT_EQ(text.contains(QStringLiteral(" station ")), adHoc);
                EXPECT_EQ(text.contains(QStringLiteral(" name ")), typedName && !adHoc);
                EXPECT_TRUE(text.contains(QStringLiteral("range")));
            }
        }
    }
}

TEST(JoinProgress, NewConnectionRestartsTheProgress)
{
    JoinProgress progress;
    progress.begin(QStringLiteral("home"), withKey);
    for (int tick = 0; tick < 6; ++tick)
        progress.tick(false, false);
    progress.begin(QString(), {});
    EXPECT_EQ(progress.text(), QStringLiteral("Connecting to the network…"));
    progress.reset();
    EXPECT_TRUE(progress.text().isEmpty());
}

} // namespace
