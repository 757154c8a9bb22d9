#include "services/simulator/service/OidCatalogue.h"

#include "driver/records/Oids.h"
#include "tests/services/card/OidCases.h"

#include <gtest/gtest.h>

TEST(OidCatalogue, ConvertsEveryOidToItsNameAndBack)
{
    for (const OidCase& row : everyOid({})) {
        EXPECT_EQ(nameOfOid(row.oid), row.name);
        EXPECT_EQ(nameOfOid(row.oid | oidSetFlag), row.name);
        EXPECT_EQ(oidFromText(row.name), row.oid);
    }
    EXPECT_TRUE(nameOfOid(0x12345678).empty());
}

TEST(OidCatalogue, ParsesNumbersAndRemovesTheSetFlag)
{
    EXPECT_EQ(oidFromText("0x0D010102"), OID_802_11_SSID);
    EXPECT_EQ(oidFromText("0x0d810102"), OID_802_11_SSID);
    EXPECT_EQ(oidFromText("65812"), 65812U);
    for (const char* text : { "", "0x", "0xZZ", "12x", "-1", "OID_NONE", "0x1FFFFFFFF" })
        EXPECT_FALSE(oidFromText(text)) << text;
}
