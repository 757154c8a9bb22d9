#include "survey/SurveyTexts.h"

#include <gtest/gtest.h>

namespace {

TEST(SurveyTexts, ExplainsWhyTheListIsEmpty)
{
    const QString noCard
        = emptyListText({ .card = CardState::Absent, .deviceExists = false, .radioOn = true, .surveyed = false });
    const QString radioOff = emptyListText({ .deviceExists = true, .radioOn = false, .surveyed = true });
    const QString searching = emptyListText({ .deviceExists = true, .radioOn = true, .surveyed = false });
    const QString nothingInRange = emptyListText({ .deviceExists = true, .radioOn = true, .surveyed = true });
    EXPECT_TRUE(noCard.contains(u"No wireless card"_qs));
    EXPECT_TRUE(radioOff.contains(u"switched off"_qs));
    EXPECT_TRUE(radioOff.contains(u"Advanced Settings"_qs));
    EXPECT_TRUE(searching.contains(u"Searching"_qs));
    EXPECT_TRUE(nothingInRange.contains(u"No networks in range"_qs));
    EXPECT_TRUE(nothingInRange.contains(u"radio switch is off"_qs));
}

TEST(SurveyTexts, DoesNotReportAMissingCardBeforeTheFirstSearch)
{
    const QString looking = emptyListText({ .card = CardState::Unknown, .deviceExists = false });
    EXPECT_TRUE(looking.contains(u"Looking for a wireless card"_qs));
    EXPECT_EQ(emptyListText({ .card = CardState::Unknown, .deviceExists = true, .radioOn = true }),
        emptyListText({ .card = CardState::Absent, .deviceExists = true, .radioOn = true }));
}

TEST(SurveyTexts, CardThatDoesNotAnswerIsNotReportedAsMissing)
{
    for (const bool exists : { false, true }) {
        const QString silent = emptyListText({ .card = CardState::Silent, .deviceExists = exists, .radioOn = true });
        EXPECT_TRUE(silent.contains(u"does not answer"_qs));
    }
}

TEST(SurveyTexts, MissingCardOutranksTheRadioAndTheRadioOutranksTheScan)
{
    EXPECT_EQ(emptyListText({ .card = CardState::Absent, .radioOn = false }),
        emptyListText({ .card = CardState::Absent, .radioOn = true }));
    EXPECT_EQ(emptyListText({ .deviceExists = true, .surveyed = false }),
        emptyListText({ .deviceExists = true, .surveyed = true }));
}

} // namespace
