#include "advanced/RadioText.h"

#include <gtest/gtest.h>

#include <set>

namespace {

TEST(RadioText, SaysWithoutACardThatThereIsNone)
{
    for (const bool isOn : { false, true }) {
        EXPECT_TRUE(radioText({ .cardSwitchOn = isOn }).startsWith(u"No wireless card found."_qs));
    }
}

TEST(RadioText, ClaimsNothingThatIsUnknown)
{
    const QString text = radioText({ .cardExists = true });
    EXPECT_EQ(text, u"The card did not report its radio switch.\nThe radio has not been switched in this window."_qs);
}

TEST(RadioText, SaysWhatTheCardReported)
{
    EXPECT_TRUE(radioText({ .cardExists = true, .cardSwitchOn = true }).contains(u"radio switch is on."_qs));
    const QString off = radioText({ .cardExists = true, .cardSwitchOn = false });
    EXPECT_TRUE(off.contains(u"radio switch is off. Turn it on at the card."_qs));
}

TEST(RadioText, TellsApartEveryChoice)
{
    std::set<QString> texts;
    for (const bool isOn : { false, true }) {
        for (const bool isForThisCard : { false, true }) {
            texts.insert(radioText(
                { .cardExists = true, .cardSwitchOn = true, .chosenOn = isOn, .chosenForThisCard = isForThisCard }));
        }
    }
    EXPECT_EQ(texts.size(), 4u);
}

} // namespace
