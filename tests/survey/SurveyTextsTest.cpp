#include "survey/SurveyTexts.h"

#include <gtest/gtest.h>

namespace {

TEST(SurveyTexts, ExplainsWhyTheListIsEmpty)
{
    const QString noCard = emptyListText({ .deviceExists = false, .radioOn = true, .surveyed = false });
    const QString radioOff = emptyListText({ .deviceExists = true, .radioOn = false, .surveyed = true });
    const QString searching = emptyListText({ .deviceExists = true, .radioOn = true, .surveyed = false });
    const QString nothingInRange = emptyListText({ .deviceExists = true, .radioOn = true, .surveyed = true });
    EXPECT_TRUE(noCard.contains(u"No wireless card"_qs));
    EXPECT_TRUE(radioOff.contains(u"switched off"_qs));
    EXPECT_TRUE(searching.contains(u"Searching"_qs));
    EXPECT_TRUE(nothingInRange.contains(u"No networks in range"_qs));
    EXPECT_TRUE(nothingInRange.contains(u"radio switch is off"_qs));
}

TEST(SurveyTexts, MissingCardOutranksTheRadioAndTheRadioOutranksTheScan)
{
    EXPECT_EQ(emptyListText({ .radioOn = false }), emptyListText({ .radioOn = true }));
    EXPECT_EQ(emptyListText({ .deviceExists = true, .surveyed = false }),
        emptyListText({ .deviceExists = true, .surveyed = true }));
}

} // namespace
