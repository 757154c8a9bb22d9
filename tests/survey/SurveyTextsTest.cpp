#include "survey/SurveyTexts.h"

#include <gtest/gtest.h>

namespace {

TEST(SurveyTexts, ExplainsWhyTheListIsEmpty)
{
    const QString noCard
        = emptyListText({ .searchedForCard = true, .deviceExists = false, .radioOn = true, .surveyed = false });
    const QString radioOff = emptyListText({ .deviceExists = true, .radioOn = false, .surveyed = true });
    const QString searching = emptyListText({ .deviceExists = true, .radioOn = true, .surveyed = false });
    const QString nothingInRange = emptyListText({ .deviceExists = true, .radioOn = true, .surveyed = true });
    EXPECT_TRUE(noCard.contains(u"No wireless card"_qs));
    EXPECT_TRUE(radioOff.contains(u"switched off"_qs));
    EXPECT_TRUE(searching.contains(u"Searching"_qs));
    EXPECT_TRUE(nothingInRange.contains(u"No networks in range"_qs));
    EXPECT_TRUE(nothingInRange.contains(u"radio switch is off"_qs));
}

TEST(SurveyTexts, DoesNotReportAMissingCardBeforeTheFirstSearch)
{
    const QString looking = emptyListText({ .searchedForCard = false, .deviceExists = false });
    EXPECT_TRUE(looking.contains(u"Looking for a wireless card"_qs));
    EXPECT_EQ(emptyListText({ .searchedForCard = false, .deviceExists = true, .radioOn = true }),
        emptyListText({ .searchedForCard = true, .deviceExists = true, .radioOn = true }));
}

TEST(SurveyTexts, MissingCardOutranksTheRadioAndTheRadioOutranksTheScan)
{
    EXPECT_EQ(emptyListText({ .searchedForCard = true, .radioOn = false }),
        emptyListText({ .searchedForCard = true, .radioOn = true }));
    EXPECT_EQ(emptyListText({ .deviceExists = true, .surveyed = false }),
        emptyListText({ .deviceExists = true, .surveyed = true }));
}

} // namespace
