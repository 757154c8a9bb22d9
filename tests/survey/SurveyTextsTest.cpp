#include "survey/SurveyTexts.h"

#include "platform/NetworkName.h"
#include "tests/support/BssidListBuilder.h"

#include <gtest/gtest.h>

namespace {

QString toolTipOf(const Bytes& name)
{
    return networkNameToolTip(textFromBytes(std::span<const std::byte>(name)));
}

TEST(SurveyTexts, TellsTheReasonsForAnEmptyListApart)
{
    const QString noCard = emptyListText({ .deviceExists = false, .radioOn = true, .surveyed = false });
    const QString radioOff = emptyListText({ .deviceExists = true, .radioOn = false, .surveyed = true });
    const QString searching = emptyListText({ .deviceExists = true, .radioOn = true, .surveyed = false });
    const QString nothingInRange = emptyListText({ .deviceExists = true, .radioOn = true, .surveyed = true });
    EXPECT_TRUE(noCard.contains(u"No wireless card"_qs));
    EXPECT_TRUE(radioOff.contains(u"switched off"_qs));
    EXPECT_TRUE(searching.contains(u"Searching"_qs));
    EXPECT_TRUE(nothingInRange.contains(u"No networks in range"_qs));
    EXPECT_TRUE(nothingInRange.contains(u"radio switch is off"_qs)) << "the card's own switch leaves nothing in range";
}

TEST(SurveyTexts, WithoutACardItsRadioDoesNotMatterAndWithItsRadioOffNoSearchDoes)
{
    EXPECT_EQ(emptyListText({ .radioOn = false }), emptyListText({ .radioOn = true }));
    EXPECT_EQ(emptyListText({ .deviceExists = true, .surveyed = false }),
        emptyListText({ .deviceExists = true, .surveyed = true }));
}

TEST(SurveyTexts, AddsNothingToAPlainName)
{
    EXPECT_EQ(toolTipOf(bytesOf({ 'c', 'a', 'f', 'e' })), QString());
    EXPECT_EQ(toolTipOf(bytesOf({ 'c', 'a', 'f', 0xC3, 0xA9 })), QString());
}

TEST(SurveyTexts, SpellsOutTheBytesThatANameDoesNotGiveAway)
{
    EXPECT_TRUE(toolTipOf(bytesOf({ 0xFF, 'a', 0xFE })).endsWith(u"ff 61 fe"_qs));
    EXPECT_TRUE(toolTipOf(bytesOf({ 'a', 0x07 })).endsWith(u"61 07"_qs));
    EXPECT_TRUE(toolTipOf(bytesOf({ 'a', ' ' })).endsWith(u"61 20"_qs));
}

TEST(SurveyTexts, ShowsAPlainNameAsItIsAndOtherBytesAsReplacements)
{
    EXPECT_EQ(shownNetworkName(u"café"_qs), u"café"_qs);
    EXPECT_EQ(shownNetworkName(textFromBytes(std::span<const std::byte>(bytesOf({ 'a', 0xFF, 'b' })))), u"a\uFFFDb"_qs);
}

TEST(SurveyTexts, PutsAWordInThePlaceOfANameThatIsNotSent)
{
    EXPECT_EQ(wordForHiddenNetwork(), u"(hidden)"_qs);
    EXPECT_EQ(shownNetworkName(QString()), wordForHiddenNetwork());
}

TEST(SurveyTexts, SaysThatANetworkDoesNotSendItsName)
{
    EXPECT_FALSE(networkNameToolTip(QString()).isEmpty());
}

} // namespace
