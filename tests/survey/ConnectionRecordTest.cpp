#include "survey/ConnectionRecord.h"

#include "survey/keys/KeyRecords.h"
#include "tests/support/BssidListBuilder.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

// Returns a copy: a field of a packed record may be unaligned.
std::uint32_t ssidLength(const PROFILE_DATA& record)
{
    return record.Ssid.SsidLength;
}

// The test vector of IEEE 802.11i: passphrase "password", SSID "IEEE".
const Bytes ieeeKey = bytesOf({ 0xf4, 0x2c, 0x6f, 0xc5, 0x2d, 0xf0, 0xeb, 0xef, 0x9e, 0xbb, 0x4b, 0x90, 0xb3, 0x8a,
    0x5f, 0x90, 0x2e, 0x83, 0xfe, 0x1b, 0x13, 0x5a, 0x70, 0xe2, 0x3a, 0xed, 0x76, 0x2e, 0x97, 0x10, 0xa1, 0x2e });

NetworkChoice choiceOf(const EntryBuilder& entry, WpaClass wpaClass = WpaClass::NoWpa)
{
    return { entry.fixedPart, wpaClass, false, entry.fixedPart.Ssid };
}

EntryBuilder adHoc(std::string_view ssid = "IEEE")
{
    EntryBuilder entry(ssid);
    entry.fixedPart.InfrastructureMode = Ndis802_11IBSS;
    return entry;
}

SecuritySettings passphrase(std::string_view text, std::int32_t encryType = 0)
{
    SecuritySettings security;
    security.AuthenType = 2;
    security.EncryType = encryType;
    security.WPAPSK = text;
    return security;
}

SecuritySettings wepKey(std::size_t index, std::string_view key, std::int32_t authenType = 0)
{
    SecuritySettings security;
    security.AuthenType = authenType;
    security.EncryType = 1;
    security.SelKeyIndex = static_cast<std::int32_t>(index);
    security.WepKeys[index].length = static_cast<std::uint8_t>(key.size());
    std::copy(key.begin(), key.end(), security.WepKeys[index].material.begin());
    return security;
}

KeyRecord wpaRecord(const Bytes& key)
{
    Bytes record = bytesOf({
        71, 0, 0, 0, // Length: 32 + 39
        0, 0, 0, 0x80, // KeyIndex: transmit key 0
        32, 0, 0, 0, // KeyLength
        0, 0, 0, 0, 0, 0, // BSSID
        0, 0, // padding
        0, 0, 0, 0, 0, 0, 0, 0, // KeyRSC
    });
    append(record, key);
    record.resize(71);
    return { record.begin(), record.end() };
}

TEST(KeyRecords, WepKeyOf13BytesIs52BytesLong)
{
    const std::array<std::uint8_t, 13> key { 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13 };
    Bytes expected = bytesOf({
        52, 0, 0, 0, // Length: 13 + 39
        2, 0, 0, 0x80, // KeyIndex: transmit key 2
        13, 0, 0, 0, // KeyLength
        0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, // BSSID
        0, 0, // padding
        0, 0, 0, 0, 0, 0, 0, 0, // KeyRSC
        1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, // KeyMaterial
    });
    expected.resize(52);
    KeyRecord record(expected.begin(), expected.end());
    EXPECT_EQ(wepKeyRecord(2, true, key), record);
    record[7] = std::byte { 0 };
    EXPECT_EQ(wepKeyRecord(2, false, key), record);
}

TEST(KeyRecords, PresharedKeyIs71BytesLong)
{
    PresharedKey key {};
    for (std::size_t place = 0; place < key.size(); ++place)
        key[place] = static_cast<std::uint8_t>(place + 1);
    Bytes material;
    for (const std::uint8_t byte : key)
        material.push_back(static_cast<std::byte>(byte));
    EXPECT_EQ(wpaKeyRecord(key), wpaRecord(material));
}

TEST(ConnectionRecord, OpenInfrastructureNetworkIsJoinedByBssid)
{
    const auto record = connectionRecord(choiceOf(EntryBuilder("open", 9)), nullptr);
    EXPECT_EQ(record->ConnectByBssid, 1);
    EXPECT_EQ(record->Bssid, (MacAddress { 0x00, 0x11, 0x22, 0x33, 0x44, 9 }));
    EXPECT_EQ(ssidLength(*record), 0u);
    EXPECT_EQ(record->NetworkType, 1);
    EXPECT_EQ(record->PreambleType, 2);
    EXPECT_EQ(record->RtsThreshold, 2347u);
    EXPECT_EQ(record->FragmentThreshold, 0u);
    EXPECT_EQ(record->AuthenMode, 0);
    EXPECT_EQ(record->EncryStatus, 1);
    EXPECT_EQ(record->TxPower, 0u);
    EXPECT_EQ(record->PowerSaveMode, 0);
    EXPECT_EQ(record->CamWhenAcPower, 0);
    EXPECT_EQ(record->SetWirelessMode, 0);
    EXPECT_EQ(record->DisassociateFirst, 1);
    EXPECT_TRUE(record->pWpaKey.empty());
    for (const KeyRecord& key : record->pWepKey)
        EXPECT_TRUE(key.empty());
}

TEST(ConnectionRecord, AdHocNetworkIsJoinedBySsid)
{
    const auto record = connectionRecord(choiceOf(adHoc("peers")), nullptr);
    EXPECT_EQ(record->ConnectByBssid, 0);
    EXPECT_EQ(ssidLength(*record), 5u);
    EXPECT_EQ(record->Bssid, MacAddress {});
    EXPECT_EQ(record->NetworkType, 0);
}

TEST(ConnectionRecord, HiddenNetworkIsJoinedByTheTypedNameWithTheNameAsSalt)
{
    EntryBuilder entry("");
    NetworkChoice choice = choiceOf(entry, WpaClass::PreSharedKey);
    EXPECT_TRUE(isHiddenNetwork(entry.fixedPart));
    choice.hidden = true;
    choice.ssid = EntryBuilder("IEEE").fixedPart.Ssid;
    const auto security = passphrase("password");
    const auto record = connectionRecord(choice, &security);
    EXPECT_EQ(record->ConnectByBssid, 0);
    EXPECT_EQ(ssidLength(*record), 4u);
    EXPECT_EQ(record->pWpaKey, wpaRecord(ieeeKey));
}

TEST(ConnectionRecord, OnlyInfrastructureNetworksAreHidden)
{
    EXPECT_FALSE(isHiddenNetwork(adHoc("").fixedPart));
    EXPECT_FALSE(isHiddenNetwork(EntryBuilder("x").fixedPart));
}

TEST(ConnectionRecord, PassphraseBecomesThePublishedKey)
{
    const auto security = passphrase("password");
    const auto record = connectionRecord(choiceOf(EntryBuilder("IEEE"), WpaClass::PreSharedKey), &security);
    EXPECT_EQ(record->pWpaKey, wpaRecord(ieeeKey));
    EXPECT_EQ(record->AuthenMode, 4);
    EXPECT_EQ(record->EncryStatus, 4);
}

TEST(ConnectionRecord, AesIsEncryptionStatusSix)
{
    const auto security = passphrase("password", 1);
    EXPECT_EQ(connectionRecord(choiceOf(EntryBuilder("IEEE")), &security)->EncryStatus, 6);
}

TEST(ConnectionRecord, WpaInAnAdHocNetworkIsWpaNone)
{
    const auto security = passphrase("password");
    const auto record = connectionRecord(choiceOf(adHoc(), WpaClass::WpaNone), &security);
    EXPECT_EQ(record->AuthenMode, 5);
    EXPECT_EQ(record->pWpaKey, wpaRecord(ieeeKey));
}

TEST(ConnectionRecord, KeyOf64DigitsIsReplacedByItsFirst32Characters)
{
    const std::string digits = "0123456789abcdef0123456789ABCDEF" + std::string(32, 'f');
    const auto security = passphrase(digits);
    Bytes expected;
    for (const char character : digits.substr(0, 32))
        expected.push_back(static_cast<std::byte>(character));
    EXPECT_EQ(connectionRecord(choiceOf(EntryBuilder("IEEE")), &security)->pWpaKey, wpaRecord(expected));
}

TEST(ConnectionRecord, RefusedPassphraseBecomesTheKeyItself)
{
    const auto security = passphrase("tab\tinside");
    Bytes expected;
    for (const char character : std::string("tab\tinside"))
        expected.push_back(static_cast<std::byte>(character));
    expected.resize(32);
    EXPECT_EQ(connectionRecord(choiceOf(EntryBuilder("IEEE")), &security)->pWpaKey, wpaRecord(expected));
}

TEST(ConnectionRecord, InvalidSsidLengthIsRefusedAsSalt)
{
    NetworkChoice choice = choiceOf(EntryBuilder("IEEE"), WpaClass::PreSharedKey);
    const auto security = passphrase("password");
    for (const std::uint32_t length : { 33u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu }) {
        choice.ssid.SsidLength = length;
        Bytes expected = bytesOf({ 'p', 'a', 's', 's', 'w', 'o', 'r', 'd' });
        expected.resize(32);
        EXPECT_EQ(connectionRecord(choice, &security)->pWpaKey, wpaRecord(expected));
    }
}

TEST(ConnectionRecord, WepKeysHaveTheirIndexAndTheTransmitBit)
{
    SecuritySettings security = wepKey(2, "abcde");
    security.WepKeys[0].length = 13;
    const auto record = connectionRecord(choiceOf(EntryBuilder("wep")), &security);
    EXPECT_EQ(record->AuthenMode, 0);
    EXPECT_EQ(record->EncryStatus, 0);
    EXPECT_EQ(record->pWepKey[0].size(), 52u);
    EXPECT_EQ(record->pWepKey[0][7], std::byte { 0 });
    EXPECT_TRUE(record->pWepKey[1].empty());
    EXPECT_EQ(record->pWepKey[2].size(), 44u);
    EXPECT_EQ(record->pWepKey[2][4], std::byte { 2 });
    EXPECT_EQ(record->pWepKey[2][7], std::byte { 0x80 });
    EXPECT_TRUE(record->pWepKey[3].empty());
    EXPECT_TRUE(record->pWpaKey.empty());
}

TEST(ConnectionRecord, SharedWithNoneKeepsItsKeysAndDisablesEncryption)
{
    SecuritySettings security = wepKey(0, "abcde", 1);
    security.EncryType = 0;
    const auto record = connectionRecord(choiceOf(EntryBuilder("wep")), &security);
    EXPECT_EQ(record->AuthenMode, 1);
    EXPECT_EQ(record->EncryStatus, 1);
    EXPECT_EQ(record->pWepKey[0].size(), 44u);
}

TEST(ConnectionRecord, OpenWithNoneHasNoKeys)
{
    SecuritySettings security = wepKey(0, "abcde");
    security.EncryType = 0;
    const auto record = connectionRecord(choiceOf(EntryBuilder("wep")), &security);
    EXPECT_EQ(record->AuthenMode, 0);
    EXPECT_EQ(record->EncryStatus, 1);
    EXPECT_TRUE(record->pWepKey[0].empty());
}

TEST(ConnectionRecord, SecondWepItemOfARepeatedListCountsAsNoneWhenOpen)
{
    // "Open" after "Shared" leaves "NONE", "WEP", "NONE", "WEP" in the sheet; only the first "WEP" is index 1.
    SecuritySettings security = wepKey(0, "abcde");
    security.EncryType = 3;
    EXPECT_EQ(connectionRecord(choiceOf(EntryBuilder("wep")), &security)->EncryStatus, 1);
    security.AuthenType = 1;
    EXPECT_EQ(connectionRecord(choiceOf(EntryBuilder("wep")), &security)->EncryStatus, 0);
}

TEST(NeedsSecuritySettings, ForPrivacyOrAPresharedKey)
{
    EXPECT_FALSE(needsSecuritySettings(choiceOf(EntryBuilder())));
    EXPECT_TRUE(needsSecuritySettings(choiceOf(EntryBuilder(), WpaClass::PreSharedKey)));
    EXPECT_TRUE(needsSecuritySettings(choiceOf(EntryBuilder(), WpaClass::WpaNone)));
    EntryBuilder entry;
    entry.fixedPart.Privacy = 1;
    EXPECT_TRUE(needsSecuritySettings(choiceOf(entry)));
}

} // namespace
