#include "survey/ProfileFromScan.h"

#include "tests/support/BssidListBuilder.h"
#include "tests/support/RecordingAssertionHandler.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

std::optional<ProfileProposal> proposalOf(const EntryBuilder& entry)
{
    RecordingAssertionHandler assertions;
    Bytes buffer = inBuffer(bssidList({ entry }));
    return profileProposal(*BssidListWalk(buffer).next(), assertions);
}

EntryBuilder withoutPrivacy(EntryBuilder entry)
{
    entry.fixedPart.Privacy = 0;
    return entry;
}

using Security = std::pair<std::int32_t, std::int32_t>; // AuthenMode, EcrypStatus

Security security(const EntryBuilder& entry)
{
    const auto proposal = proposalOf(entry);
    return proposal ? Security { proposal->AuthenMode, proposal->EcrypStatus } : Security { -1, -1 };
}

TEST(ProfileProposal, OpenAdHocNetwork)
{
    EntryBuilder entry("peers", 7);
    entry.fixedPart.InfrastructureMode = Ndis802_11IBSS;
    const auto proposal = proposalOf(entry);
    ASSERT_TRUE(proposal.has_value());
    EXPECT_EQ(proposal->SSID.bytes(), "peers");
    EXPECT_EQ(proposal->BSSID, (MacAddress { 0x00, 0x11, 0x22, 0x33, 0x44, 7 }));
    EXPECT_EQ(proposal->EcrypStatus, 1);
    EXPECT_EQ(proposal->AuthenMode, 0);
    EXPECT_EQ(proposal->Networktype, 0);
    EXPECT_EQ(proposal->Channel, 1);
}

TEST(ProfileProposal, PrivacyWithoutWpaIsWep)
{
    EntryBuilder entry;
    entry.fixedPart.Privacy = 1;
    EXPECT_EQ(proposalOf(entry)->EcrypStatus, 0);
    EXPECT_EQ(proposalOf(entry)->AuthenMode, 0);
}

TEST(ProfileProposal, EveryPskCipherExceptTkipIsAes)
{
    EXPECT_EQ(proposalOf(wpaEntry(2, 2))->EcrypStatus, 4);
    EXPECT_EQ(proposalOf(wpaEntry(3, 2))->EcrypStatus, 6);
    EXPECT_EQ(proposalOf(wpaEntry(4, 2))->EcrypStatus, 6);
    EXPECT_EQ(proposalOf(wpaEntry(5, 2))->EcrypStatus, 6);
    EXPECT_EQ(proposalOf(wpaEntry(4, 2))->AuthenMode, 4);
    EXPECT_EQ(proposalOf(wpaEntry(2, 2, Ndis802_11IBSS))->AuthenMode, 5);
    EXPECT_EQ(proposalOf(wpaEntry(2, 2, Ndis802_11IBSS))->EcrypStatus, 4);
}

TEST(ProfileProposal, PresharedKeyNetworkWithoutPrivacyKeepsItsCipher)
{
    const auto securityOf = [](int cipher, std::int32_t mode = Ndis802_11Infrastructure) {
        return security(withoutPrivacy(wpaEntry(cipher, 2, mode)));
    };
    EXPECT_EQ(securityOf(2), (Security { 4, 4 }));
    EXPECT_EQ(securityOf(4), (Security { 4, 6 }));
    EXPECT_EQ(securityOf(5), (Security { 4, 6 })) << "without a cipher of its own the text is \"Not Used\"";
    EXPECT_EQ(securityOf(2, Ndis802_11IBSS), (Security { 5, 4 }));
    EXPECT_EQ(securityOf(4, Ndis802_11IBSS), (Security { 5, 6 }));
}

// Without a pre-shared key the group cipher is ignored.
TEST(ProfileProposal, EveryOtherWpaNetworkKeepsTheDefaults)
{
    for (const int authentication : { 1, 3, 7, 255 }) {
        for (const std::int32_t mode : { Ndis802_11Infrastructure, Ndis802_11IBSS }) {
            for (const int cipher : { 2, 4 }) {
                const EntryBuilder entry = wpaEntry(cipher, authentication, mode);
                EXPECT_EQ(security(entry), (Security { 0, 0 })) << authentication << ", " << mode << ", " << cipher;
                EXPECT_EQ(security(withoutPrivacy(entry)), (Security { 0, 1 }))
                    << authentication << ", " << mode << ", " << cipher;
            }
        }
    }
}

// A name of the maximum length has no terminating zero byte, so it continues into the next field, as in the rows of the
// site survey. The editor truncates it.
TEST(ProfileProposal, NameOf32BytesContinuesToTheNextZero)
{
    const QByteArray name("thirty-two letters of a network!");
    ASSERT_EQ(name.size(), NetworkName::maxLength);
    EntryBuilder entry(std::string_view(name.data(), 32));
    EXPECT_EQ(proposalOf(entry)->SSID.bytes(), name);
    entry.fixedPart.Privacy = 1;
    EXPECT_EQ(proposalOf(entry)->SSID.bytes(), name + '\x01');
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
