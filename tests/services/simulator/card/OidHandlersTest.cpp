#include "services/simulator/card/OidHandlers.h"

#include "services/card/OidCatalogue.h"
#include "tests/services/simulator/card/CardUnderTest.h"

#include <gtest/gtest.h>

namespace {

struct OidCase {
    std::uint32_t oid;
    std::uint32_t queryLength; // 0: cannot be queried
    std::optional<Bytes> setInput; // a valid one; std::nullopt: cannot be set
    bool needsLink { false };
};

OidCase query(std::uint32_t oid, std::uint32_t length)
{
    return { oid, length, std::nullopt };
}

template <typename Record> OidCase set(std::uint32_t oid, const Record& input)
{
    return { oid, 0, bytesOf(input) };
}

template <typename Record> OidCase both(std::uint32_t oid, const Record& input)
{
    return { oid, sizeof(Record), bytesOf(input) };
}

// Every OID of the driver interface.
std::vector<OidCase> everyOid()
{
    using Word = std::uint32_t;
    return {
        query(OID_GEN_MEDIA_CONNECT_STATUS, 4),
        query(OID_GEN_RCV_OK, 4),
        query(OID_GEN_RCV_NO_BUFFER, 4),
        query(OID_802_3_CURRENT_ADDRESS, 6),
        { OID_802_11_BSSID, 6, bytesOf(openNetwork("", 1).bssid), true },
        both(OID_802_11_SSID, ssidRecord("cafe")),
        both<Word>(OID_802_11_INFRASTRUCTURE_MODE, 1),
        set<Word>(OID_802_11_DISASSOCIATE, 0xDEAD),
        both<Word>(OID_802_11_AUTHENTICATION_MODE, 4),
        set<Word>(OID_802_11_BSSID_LIST_SCAN, 0xBEEF),
        both<Word>(OID_802_11_ENCRYPTION_STATUS, 6),
        { OID_802_11_ADD_KEY, 0, keyRecord(keyIndexTransmit, "abcde") },
        set(OID_802_11_REMOVE_KEY, removeKeyRecord(3)),
        query(VX_OID_802_11_EVENT_FLAG, 4),
        query(VX_OID_802_11_READY_FLAG, 4),
        query(OID_802_11_NETWORK_TYPES_SUPPORTED, 20),
        { OID_802_11_RSSI, 4, std::nullopt, true },
        both<Word>(OID_802_11_FRAGMENTATION_THRESHOLD, 0),
        both<Word>(OID_802_11_RTS_THRESHOLD, 2347),
        both(OID_802_11_DESIRED_RATES, NDIS_802_11_RATES { 22 }),
        both(OID_802_11_CONFIGURATION, CardSettings().configuration),
        both<Word>(OID_802_11_POWER_MODE, 2),
        query(OID_802_11_BSSID_LIST, 4096),
        query(VX_OID_802_11_BSSID_LIST_NEXT, 4096),
        query(OID_802_11_STATISTICS, 100),
        both<Word>(VX_OID_802_11_PREAMBLE, 2),
        query(VX_OID_802_11_LINK_COUNTERS, 16),
        { VX_OID_802_11_RESET_COUNTERS, 0, Bytes() },
        both<Word>(VX_OID_802_11_RADIO, 1),
        both<Word>(VX_OID_802_11_PHY_MODE, 3),
        both(VX_OID_802_11_STA_CONFIG, VX_802_11_STA_CONFIG {}),
        { VX_OID_802_11_ADD_WPA, 0, keyRecord(keyIndexTransmit, std::string(32, 'p'), false) },
        both<Word>(VX_OID_802_11_TX_POWER, 12),
        query(VX_OID_802_11_EEPROM_VERSION, 4),
    };
}

class EveryOid : public testing::TestWithParam<OidCase> {
protected:
    CardUnderTest card { Scenario { {}, { openNetwork("cafe", 1) } } };
};

} // namespace

TEST_P(EveryOid, AnswersQueriesThatHaveRoomForItsRecord)
{
    const OidCase& row = GetParam();
    if (row.needsLink) {
        EXPECT_FALSE(card.queryBytes(row.oid, row.queryLength));
        ASSERT_TRUE(card.set(OID_802_11_SSID, ssidRecord("cafe")));
        card.pass(1000);
    }
    card.scan();
    const auto reply = card.queryBytes(row.oid, std::max(row.queryLength, 4U));
    ASSERT_EQ(reply.has_value(), row.queryLength != 0);
    if (!reply)
        return;
    const bool isList = row.queryLength == 4096;
    if (isList)
        EXPECT_LE(reply->size(), row.queryLength);
    else
        EXPECT_EQ(reply->size(), row.queryLength);
    EXPECT_FALSE(card.queryBytes(row.oid, row.queryLength - 1));
    EXPECT_FALSE(card.queryBytes(row.oid, 0));
    EXPECT_TRUE(card.queryBytes(row.oid, row.queryLength + 1));
}

TEST_P(EveryOid, AcceptsOnlySetsOfItsRecordSize)
{
    const OidCase& row = GetParam();
    Bytes input = row.setInput.value_or(Bytes());
    EXPECT_EQ(card.setBytes(row.oid, input), row.setInput.has_value());
    input.push_back({});
    EXPECT_FALSE(card.setBytes(row.oid, input));
    if (input.size() == 1)
        return;
    input.resize(input.size() - 2);
    EXPECT_FALSE(card.setBytes(row.oid, input));
    EXPECT_FALSE(card.setBytes(row.oid, {}));
}

INSTANTIATE_TEST_SUITE_P(Catalogue, EveryOid, testing::ValuesIn(everyOid()),
    [](const testing::TestParamInfo<OidCase>& info) { return std::string(nameOfOid(info.param.oid)); });

TEST(OidHandlers, RejectUnknownOids)
{
    CardUnderTest card { Scenario() };
    constexpr std::uint32_t unknownOid = OID_802_11_BSSID | 0xFF00;
    EXPECT_TRUE(nameOfOid(unknownOid).empty());
    EXPECT_FALSE(card.queryBytes(unknownOid, 4096));
    EXPECT_FALSE(card.setBytes(unknownOid, Bytes(4)));
}
