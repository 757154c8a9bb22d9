#include "services/card/OidCatalogue.h"

#include "driver/records/Oids.h"

#include <gtest/gtest.h>

TEST(OidCatalogue, NamesEveryObjectOnce)
{
    EXPECT_EQ(oidNames().size(), 34U);
    for (const OidName& row : oidNames()) {
        EXPECT_EQ(nameOfOid(row.oid), row.name);
        EXPECT_EQ(nameOfOid(row.oid | oidSetFlag), row.name);
        EXPECT_EQ(oidFromText(row.name), row.oid);
    }
    EXPECT_TRUE(nameOfOid(0x12345678).empty());
}

TEST(OidCatalogue, ReadsNumbersWithoutTheSetFlag)
{
    EXPECT_EQ(oidFromText("0x0D010102"), OID_802_11_SSID);
    EXPECT_EQ(oidFromText("0x0d810102"), OID_802_11_SSID);
    EXPECT_EQ(oidFromText("65812"), 65812U);
    for (const char* text : { "", "0x", "0xZZ", "12x", "-1", "OID_NONE", "0x1FFFFFFFF" })
        EXPECT_FALSE(oidFromText(text)) << text;
}
