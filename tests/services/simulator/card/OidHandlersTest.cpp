#include "services/simulator/card/OidHandlers.h"

#include "services/simulator/service/OidCatalogue.h"
#include "tests/services/card/OidCases.h"
#include "tests/services/simulator/card/CardUnderTest.h"

#include <gtest/gtest.h>

namespace {

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

INSTANTIATE_TEST_SUITE_P(Catalogue, EveryOid, testing::ValuesIn(everyOid(openNetwork("", 1).bssid)),
    [](const testing::TestParamInfo<OidCase>& info) { return std::string(info.param.name); });

TEST(OidHandlers, RejectUnknownOids)
{
    CardUnderTest card { Scenario() };
    constexpr std::uint32_t unknownOid = OID_802_11_BSSID | 0xFF00;
    EXPECT_TRUE(nameOfOid(unknownOid).empty());
    EXPECT_FALSE(card.queryBytes(unknownOid, 4096));
    EXPECT_FALSE(card.setBytes(unknownOid, Bytes(4)));
}
