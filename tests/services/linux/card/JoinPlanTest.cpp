#include "services/linux/card/JoinPlan.h"

#include "tests/services/linux/card/CardUnderTest.h"

#include <gtest/gtest.h>

namespace {

class JoinPlan : public testing::Test {
protected:
    const NetworkBlock* joinSsid(const std::string& ssid)
    {
        (void)card.set(OID_802_11_SSID, ssidRecord(ssid));
        return card.block();
    }
    const NetworkBlock* joinBssid(std::uint8_t lastOctet)
    {
        (void)card.set(OID_802_11_BSSID, MacAddress { 2, 0, 0, 0, 0xA0, lastOctet });
        return card.block();
    }
    void usePresharedKey(std::int32_t encryption)
    {
        (void)card.set<std::int32_t>(OID_802_11_AUTHENTICATION_MODE, Ndis802_11AuthModeWPAPSK);
        (void)card.set(OID_802_11_ENCRYPTION_STATUS, encryption);
        (void)card.setBytes(VX_OID_802_11_ADD_WPA, keyRecord(keyIndexTransmit, std::string(32, 'p'), false));
    }

    CardUnderTest card;
};

} // namespace

TEST_F(JoinPlan, OpenNetworkByName)
{
    card.hear({ networkEntry("cafe", 1, 2437), networkEntry("cafe", 2, 5180), networkEntry("other", 3, 2412) });
    const NetworkBlock* const block = joinSsid("cafe");
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(block->security, BlockSecurity::Open);
    EXPECT_EQ(block->ssid, octets("cafe"));
    EXPECT_FALSE(block->bssid);
    EXPECT_EQ(block->scanMhz, (std::vector<std::uint32_t> { 2437, 5180 }));
    EXPECT_EQ(block->allowedMhz, (std::vector<std::uint32_t> { 2412, 2437, 5180, 5260 }));
}

TEST_F(JoinPlan, NetworkByAddressHasTheNameOfTheList)
{
    card.hear({ networkEntry("cafe", 1, 2437) });
    const NetworkBlock* block = joinBssid(1);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(block->ssid, octets("cafe"));
    EXPECT_EQ(block->bssid, (MacAddress { 2, 0, 0, 0, 0xA0, 1 }));
    block = joinBssid(9);
    ASSERT_NE(block, nullptr);
    EXPECT_TRUE(block->ssid.empty());
    EXPECT_TRUE(block->scanMhz.empty());
}

TEST_F(JoinPlan, UnknownNameIsLookedForWhereHiddenNetworksAre)
{
    card.hear({ networkEntry("", 1, 2437), networkEntry("cafe", 2, 2412) });
    const NetworkBlock* const block = joinSsid("secret");
    ASSERT_NE(block, nullptr);
    EXPECT_TRUE(block->asksByName);
    EXPECT_EQ(block->scanMhz, (std::vector<std::uint32_t> { 2437 }));
}

TEST_F(JoinPlan, WepHasItsKeysAndTransmitIndex)
{
    (void)card.set<std::int32_t>(OID_802_11_AUTHENTICATION_MODE, Ndis802_11AuthModeShared);
    (void)card.set<std::int32_t>(OID_802_11_ENCRYPTION_STATUS, Ndis802_11Encryption1Enabled);
    EXPECT_EQ(joinSsid("cafe"), nullptr); // without a key
    (void)card.setBytes(OID_802_11_ADD_KEY, keyRecord(1, "abcde"));
    (void)card.setBytes(OID_802_11_ADD_KEY, keyRecord(keyIndexTransmit | 3, "0123456789abc"));
    const NetworkBlock* const block = joinSsid("cafe");
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(block->security, BlockSecurity::Wep);
    EXPECT_TRUE(block->sharedKeyAuthentication);
    EXPECT_EQ(block->transmitKeyIndex, 3U);
    EXPECT_EQ(block->wepKeys[1].size(), 5U);
    EXPECT_EQ(block->wepKeys[3].size(), 13U);
}

TEST_F(JoinPlan, WithoutATransmitKeyTheFirstOneTransmits)
{
    (void)card.set<std::int32_t>(OID_802_11_ENCRYPTION_STATUS, Ndis802_11Encryption1Enabled);
    (void)card.setBytes(OID_802_11_ADD_KEY, keyRecord(2, "abcde"));
    const NetworkBlock* const block = joinSsid("cafe");
    ASSERT_NE(block, nullptr);
    EXPECT_FALSE(block->sharedKeyAuthentication);
    EXPECT_EQ(block->transmitKeyIndex, 2U);
}

TEST_F(JoinPlan, PresharedKeyIsRequired)
{
    (void)card.set<std::int32_t>(OID_802_11_AUTHENTICATION_MODE, Ndis802_11AuthModeWPAPSK);
    EXPECT_EQ(joinSsid("cafe"), nullptr);
    usePresharedKey(Ndis802_11Encryption3Enabled);
    const NetworkBlock* const block = joinSsid("cafe");
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(block->security, BlockSecurity::WpaPsk);
    EXPECT_EQ(block->presharedKey.back(), 'p');
    EXPECT_EQ(block->pairwise, (std::vector { CipherSuite::Ccmp, CipherSuite::Tkip })); // nothing is known of it
}

TEST_F(JoinPlan, CipherIsWhatTheNetworkHas)
{
    constexpr std::uint8_t tkip = 2;
    card.hear({ rsnEntry("aes", 1), rsnEntry("tkip", 2, tkip) });
    usePresharedKey(Ndis802_11Encryption3Enabled);
    EXPECT_EQ(joinSsid("aes")->pairwise, (std::vector { CipherSuite::Ccmp }));
    EXPECT_EQ(joinSsid("tkip")->pairwise, (std::vector { CipherSuite::Tkip }));
    usePresharedKey(Ndis802_11Encryption2Enabled);
    EXPECT_EQ(joinSsid("aes")->pairwise, (std::vector { CipherSuite::Ccmp }));
}

TEST_F(JoinPlan, AdHocNetworkNeedsANameAndHasAChannel)
{
    (void)card.set<std::int32_t>(OID_802_11_INFRASTRUCTURE_MODE, Ndis802_11IBSS);
    NDIS_802_11_CONFIGURATION configuration = CardSettings().configuration;
    configuration.DSConfig = 2437000;
    (void)card.set(OID_802_11_CONFIGURATION, configuration);
    const NetworkBlock* block = joinSsid("cell");
    ASSERT_NE(block, nullptr);
    EXPECT_TRUE(block->isAdHoc);
    EXPECT_FALSE(block->asksByName);
    EXPECT_EQ(block->adHocMhz, 2437U);
    EXPECT_EQ(joinSsid(""), nullptr);

    // A cell that exists decides the channel.
    ScanEntry cell = networkEntry("cell", 1, 2412);
    cell.capabilities = capabilityIbss;
    card.hear({ cell });
    block = joinBssid(1);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(block->ssid, octets("cell"));
    EXPECT_FALSE(block->bssid);
    EXPECT_EQ(block->adHocMhz, 2412U);
}

TEST_F(JoinPlan, AutomaticModeFollowsTheList)
{
    (void)card.set<std::int32_t>(OID_802_11_INFRASTRUCTURE_MODE, Ndis802_11AutoUnknown);
    ScanEntry cell = networkEntry("cell", 1);
    cell.capabilities = capabilityIbss;
    card.hear({ cell, networkEntry("cafe", 2) });
    EXPECT_TRUE(joinSsid("cell")->isAdHoc);
    EXPECT_FALSE(joinSsid("cafe")->isAdHoc);
}

TEST_F(JoinPlan, WpaDoesNotWorkWithoutInfrastructure)
{
    usePresharedKey(Ndis802_11Encryption3Enabled);
    (void)card.set<std::int32_t>(OID_802_11_INFRASTRUCTURE_MODE, Ndis802_11IBSS);
    EXPECT_EQ(joinSsid("cell"), nullptr);
}

TEST_F(JoinPlan, RefusedJoinKeepsTheLink)
{
    card.joinOpen();
    (void)card.set<std::int32_t>(OID_802_11_ENCRYPTION_STATUS, Ndis802_11Encryption1Enabled);
    EXPECT_FALSE(card.set(OID_802_11_SSID, ssidRecord("wep")));
    EXPECT_TRUE(card.card.state().link);
}

TEST_F(JoinPlan, FastTransitionIsUsedOnlyWhereThereIsNothingElse)
{
    ScanEntry fast = rsnEntry("fast", 1);
    fast.elements[fast.elements.size() - 3] = 4; // the AKM suite
    card.hear({ fast, rsnEntry("usual", 2) });
    usePresharedKey(Ndis802_11Encryption3Enabled);
    EXPECT_TRUE(joinSsid("fast")->needsFastTransition);
    EXPECT_FALSE(joinSsid("usual")->needsFastTransition);
}
