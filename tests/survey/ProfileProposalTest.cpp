#include "survey/ProfileProposal.h"

#include "tests/support/BssidListBuilder.h"
#include "tests/support/RecordingAssertionHandler.h"

#include <gtest/gtest.h>

namespace {

std::optional<ProfileProposal> proposalOf(const EntryBuilder& entry)
{
    RecordingAssertionHandler assertions;
    Bytes buffer = inBuffer(bssidList({ entry }));
    return profileProposal(*BssidListWalk(buffer).next(), assertions);
}

EntryBuilder wpaEntry(int cipher, int authentication, std::int32_t mode = Ndis802_11Infrastructure)
{
    EntryBuilder entry;
    entry.fixedPart.Privacy = 1;
    entry.fixedPart.InfrastructureMode = mode;
    entry.elements = wpaElement(cipher, authentication);
    return entry;
}

TEST(ProfileProposal, OpenAdHocNetwork)
{
    EntryBuilder entry("peers", 7);
    entry.fixedPart.InfrastructureMode = Ndis802_11IBSS;
    const auto proposal = proposalOf(entry);
    ASSERT_TRUE(proposal.has_value());
    EXPECT_EQ(proposal->SSID, "peers");
    EXPECT_EQ(proposal->BSSID, (MacAddress { 0x00, 0x11, 0x22, 0x33, 0x44, 7 }));
    EXPECT_EQ(proposal->EcrypStatus, 1);
    EXPECT_EQ(proposal->AuthenMode, 0);
    EXPECT_EQ(proposal->Networktype, 0);
    EXPECT_EQ(proposal->Channel, 1);
}

TEST(ProfileProposal, PrivacyAloneIsWep)
{
    EntryBuilder entry;
    entry.fixedPart.Privacy = 1;
    EXPECT_EQ(proposalOf(entry)->EcrypStatus, 0);
    EXPECT_EQ(proposalOf(entry)->AuthenMode, 0);
}

TEST(ProfileProposal, CipherOfAPresharedKeyNetworkIsTkipOrElseAes)
{
    EXPECT_EQ(proposalOf(wpaEntry(2, 2))->EcrypStatus, 4);
    EXPECT_EQ(proposalOf(wpaEntry(3, 2))->EcrypStatus, 6);
    EXPECT_EQ(proposalOf(wpaEntry(4, 2))->EcrypStatus, 6);
    EXPECT_EQ(proposalOf(wpaEntry(5, 2))->EcrypStatus, 6);
    EXPECT_EQ(proposalOf(wpaEntry(4, 2))->AuthenMode, 4);
    EXPECT_EQ(proposalOf(wpaEntry(2, 2, Ndis802_11IBSS))->AuthenMode, 5);
    EXPECT_EQ(proposalOf(wpaEntry(2, 2, Ndis802_11IBSS))->EcrypStatus, 4);
}

TEST(ProfileProposal, EnterpriseNetworkKeepsTheDefaults)
{
    EXPECT_EQ(proposalOf(wpaEntry(4, 1))->AuthenMode, 0);
    EXPECT_EQ(proposalOf(wpaEntry(4, 1))->EcrypStatus, 0);
}

TEST(ProfileProposal, UnknownFrequencyIsReported)
{
    EntryBuilder entry;
    entry.fixedPart.Configuration.DSConfig = 2419000;
    Bytes buffer = inBuffer(bssidList({ entry }));
    RecordingAssertionHandler assertions;
    EXPECT_FALSE(profileProposal(*BssidListWalk(buffer).next(), assertions).has_value());
    EXPECT_EQ(assertions.failures,
        (std::vector<RecordingAssertionHandler::Failure> { { "OnAddProfile", "SiteSurveyPageController",
            "SiteSurveyPageController", 1148, "Invalid parameter not satisfying: FALSE" } }));
    assertions.goOn = true;
    EXPECT_EQ(profileProposal(*BssidListWalk(buffer).next(), assertions)->Channel, 1);
}

} // namespace
