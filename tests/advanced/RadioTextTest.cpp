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

TEST(RadioText, TellsAMissingCardFromOneThatIsSilentOrNotYetSearchedFor)
{
    EXPECT_TRUE(radioText({ .card = CardPresence::Unknown }).startsWith(u"Looking for a wireless card"_qs));
    for (const bool exists : { false, true })
        EXPECT_TRUE(radioText({ .card = CardPresence::Silent, .cardExists = exists })
                        .startsWith(u"The wireless card does not answer."_qs));
}

TEST(RadioText, ClaimsNothingThatIsUnknown)
{
    const QString text = radioText({ .cardExists = true });
    EXPECT_TRUE(text.contains(u"did not report its radio switch"_qs));
    EXPECT_TRUE(text.contains(u"may have left it off"_qs));
}

TEST(RadioText, SaysWhatTheCardReported)
{
    EXPECT_TRUE(radioText({ .cardExists = true, .cardSwitchOn = true }).contains(u"radio switch was on"_qs));
    const QString off = radioText({ .cardExists = true, .cardSwitchOn = false });
    EXPECT_TRUE(off.contains(u"radio switch was off"_qs));
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
