#include "about/VersionTexts.h"

#include <gtest/gtest.h>

namespace {

TEST(EepromVersionText, ConsistsOfBytesTwoAndThreeInDecimal)
{
    EXPECT_EQ(eepromVersionText({ 0, 0, 0x02, 0x10 }), u"2.16");
    EXPECT_EQ(eepromVersionText({ 9, 8, 1, 0 }), u"1.0");
    EXPECT_EQ(eepromVersionText({ 0, 0, 255, 255 }), u"255.255");
    EXPECT_EQ(eepromVersionText({}), u"0.0");
}

} // namespace
