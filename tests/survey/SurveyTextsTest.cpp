#include "survey/SurveyTexts.h"

#include <gtest/gtest.h>

namespace {

TEST(SurveyTexts, ExplainsWhyTheListIsEmpty)
{
    const QString noCard
        = emptyListText({ .card = CardPresence::Absent, .deviceExists = false, .radioOn = true, .surveyed = false });
    const QString radioOff = emptyListText({ .deviceExists = true, .radioOn = false, .surveyed = true });
    const QString searching = emptyListText({ .deviceExists = true, .radioOn = true, .surveyed = false });
    const QString nothingInRange = emptyListText({ .deviceExists = true, .radioOn = true, .surveyed = true });
    EXPECT_TRUE(noCard.contains(u"No wireless card"_qs));
    EXPECT_TRUE(radioOff.contains(u"switched off"_qs));
    EXPECT_TRUE(radioOff.contains(u"Advanced Settings"_qs));
    EXPECT_TRUE(searching.contains(u"Searching"_qs));
    EXPECT_TRUE(nothingInRange.contains(u"No networks in range"_qs));
    EXPECT_TRUE(nothingInRange.contains(u"card's own switch"_qs));
    EXPECT_TRUE(nothingInRange.contains(u"left off by an earlier window (see Advanced Settings)"_qs));
}

TEST(SurveyTexts, NamesTheCardsSwitchWhereItIsKnownToBeOff)
{
    const SurveyState state { .deviceExists = true, .radioOn = true, .cardSwitchOn = false, .surveyed = true };
    EXPECT_TRUE(emptyListText(state).contains(u"own radio switch is off. Switch it on"_qs));
    SurveyState on = state;
    on.cardSwitchOn = true;
    EXPECT_FALSE(emptyListText(on).contains(u"Switch it on"_qs));
    EXPECT_FALSE(emptyListText(on).contains(u"own switch"_qs));
    EXPECT_TRUE(emptyListText(on).contains(u"earlier window has left the radio off"_qs));
    on.radioSwitched = true;
    EXPECT_EQ(emptyListText(on), u"No networks in range. Press Rescan to search again."_qs);
    on.cardSwitchOn.reset();
    EXPECT_TRUE(emptyListText(on).contains(u"own radio switch is off"_qs));
    EXPECT_FALSE(emptyListText(on).contains(u"earlier window"_qs));
    for (bool SurveyState::*const outranking :
        { &SurveyState::deviceExists, &SurveyState::radioOn, &SurveyState::surveyed }) {
        SurveyState other = state;
        other.*outranking = false;
        EXPECT_FALSE(emptyListText(other).contains(u"own radio switch"_qs)) << qPrintable(emptyListText(other));
    }
}

TEST(SurveyTexts, DoesNotReportAMissingCardBeforeTheFirstSearch)
{
    const QString looking = emptyListText({ .card = CardPresence::Unknown, .deviceExists = false });
    EXPECT_TRUE(looking.contains(u"Looking for a wireless card"_qs));
    EXPECT_EQ(emptyListText({ .card = CardPresence::Unknown, .deviceExists = true, .radioOn = true }),
        emptyListText({ .card = CardPresence::Absent, .deviceExists = true, .radioOn = true }));
}

TEST(SurveyTexts, CardThatDoesNotAnswerIsNotReportedAsMissing)
{
    for (const bool exists : { false, true }) {
        const QString silent = emptyListText({ .card = CardPresence::Silent, .deviceExists = exists, .radioOn = true });
        EXPECT_TRUE(silent.contains(u"does not answer"_qs));
    }
}

TEST(SurveyTexts, MissingCardOutranksTheRadioAndTheRadioOutranksTheScan)
{
    EXPECT_EQ(emptyListText({ .card = CardPresence::Absent, .radioOn = false }),
        emptyListText({ .card = CardPresence::Absent, .radioOn = true }));
    EXPECT_EQ(emptyListText({ .deviceExists = true, .surveyed = false }),
        emptyListText({ .deviceExists = true, .surveyed = true }));
}

} // namespace
