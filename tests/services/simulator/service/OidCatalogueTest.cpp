#include "services/simulator/service/OidCatalogue.h"

#include "driver/records/Oids.h"

#include <gtest/gtest.h>

namespace {

struct Named {
    std::uint32_t oid;
    std::string_view name;
};

#define NAMED(oid)                                                                                                     \
    Named                                                                                                              \
    {                                                                                                                  \
        oid, #oid                                                                                                      \
    }

constexpr Named everyOid[] { NAMED(OID_GEN_MEDIA_CONNECT_STATUS), NAMED(OID_GEN_RCV_OK), NAMED(OID_GEN_RCV_NO_BUFFER),
    NAMED(OID_802_3_CURRENT_ADDRESS), NAMED(OID_802_11_BSSID), NAMED(OID_802_11_SSID),
    NAMED(OID_802_11_INFRASTRUCTURE_MODE), NAMED(OID_802_11_DISASSOCIATE), NAMED(OID_802_11_AUTHENTICATION_MODE),
    NAMED(OID_802_11_BSSID_LIST_SCAN), NAMED(OID_802_11_ENCRYPTION_STATUS), NAMED(OID_802_11_ADD_KEY),
    NAMED(OID_802_11_REMOVE_KEY), NAMED(VX_OID_802_11_EVENT_FLAG), NAMED(VX_OID_802_11_READY_FLAG),
    NAMED(OID_802_11_NETWORK_TYPES_SUPPORTED), NAMED(OID_802_11_RSSI), NAMED(OID_802_11_FRAGMENTATION_THRESHOLD),
    NAMED(OID_802_11_RTS_THRESHOLD), NAMED(OID_802_11_DESIRED_RATES), NAMED(OID_802_11_CONFIGURATION),
    NAMED(OID_802_11_POWER_MODE), NAMED(OID_802_11_BSSID_LIST), NAMED(VX_OID_802_11_BSSID_LIST_NEXT),
    NAMED(OID_802_11_STATISTICS), NAMED(VX_OID_802_11_PREAMBLE), NAMED(VX_OID_802_11_LINK_COUNTERS),
    NAMED(VX_OID_802_11_RESET_COUNTERS), NAMED(VX_OID_802_11_RADIO), NAMED(VX_OID_802_11_PHY_MODE),
    NAMED(VX_OID_802_11_STA_CONFIG), NAMED(VX_OID_802_11_ADD_WPA), NAMED(VX_OID_802_11_TX_POWER),
    NAMED(VX_OID_802_11_EEPROM_VERSION) };

} // namespace

TEST(OidCatalogue, ConvertsEveryOidToItsNameAndBack)
{
    for (const auto& [oid, name] : everyOid) {
        EXPECT_EQ(nameOfOid(oid), name);
        EXPECT_EQ(nameOfOid(oid | oidSetFlag), name);
        EXPECT_EQ(oidFromText(name), oid);
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
