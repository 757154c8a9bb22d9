#include "profiles/ProfileConnection.h"

#include "platform/ByteText.h"
#include "tests/profiles/SampleProfile.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

using Changes = std::initializer_list<Profile::Entry>;

std::unique_ptr<PROFILE_DATA> connectionWith(Changes changes)
{
    return profileConnection(with(sampleProfile(), changes));
}

Profile::Entry authentication(int number)
{
    return { ProfileKey::authenticationType, QString::number(number) };
}
Profile::Entry encryption(int number)
{
    return { ProfileKey::encryptionType, QString::number(number) };
}
Profile::Entry network(int number)
{
    return { ProfileKey::networkType, QString::number(number) };
}
Profile::Entry channel(const char* text)
{
    return { ProfileKey::channel, QString::fromLatin1(text) };
}
Profile::Entry presharedKey(const QString& text)
{
    return { ProfileKey::wpaPsk, text };
}

QByteArray bytesOf(const KeyRecord& record)
{
    return QByteArray(reinterpret_cast<const char*>(record.data()), static_cast<qsizetype>(record.size())).toHex();
}

// The key material of a pre-shared key record, bytes 28 to 59.
QByteArray presharedKeyIn(const PROFILE_DATA& record)
{
    return bytesOf(record.pWpaKey).mid(56, 64);
}

bool hasNoKeys(const PROFILE_DATA& record)
{
    for (const KeyRecord& key : record.pWepKey)
        if (!key.empty())
            return false;
    return record.pWpaKey.empty();
}

TEST(ProfileConnection, CopiesTheStoredSettings)
{
    const auto record = profileConnection(sampleProfile());
    EXPECT_EQ(record->ConnectByBssid, 0);
    EXPECT_EQ(+record->Ssid.SsidLength, 4u);
    EXPECT_EQ(std::memcmp(record->Ssid.Ssid.data(), "home\0\0", 6), 0);
    EXPECT_EQ(record->Bssid, MacAddress {});
    EXPECT_EQ(record->NetworkType, 1);
    EXPECT_EQ(record->PreambleType, 2);
    EXPECT_EQ(record->RtsThreshold, 2347u);
    EXPECT_EQ(record->FragmentThreshold, 2346u);
    EXPECT_EQ(record->TxPower, 3u);
    EXPECT_EQ(record->PowerSaveMode, 1);
    EXPECT_EQ(record->CamWhenAcPower, 1);
    EXPECT_EQ(record->ChannelFreq, 0u);
    EXPECT_EQ(record->SetWirelessMode, 0);
    EXPECT_EQ(record->DesiredRates, NDIS_802_11_RATES {});
    EXPECT_EQ(record->DisassociateFirst, 1);
}

TEST(ProfileConnection, ReadsMissingKeysAsZero)
{
    const auto record = profileConnection({});
    EXPECT_EQ(+record->Ssid.SsidLength, 0u);
    EXPECT_EQ(record->NetworkType, 0);
    EXPECT_EQ(record->AuthenMode, 0);
    EXPECT_EQ(record->EncryStatus, 1);
    EXPECT_EQ(record->ChannelFreq, 0u);
    EXPECT_TRUE(hasNoKeys(*record));
    EXPECT_EQ(record->DisassociateFirst, 1);
}

TEST(ProfileConnection, ContainsTheBytesOfTheName)
{
    const QByteArray bytes("\xFFnet\x01\xC3\xA4", 7);
    const auto record = connectionWith({ { ProfileKey::ssid, textFromBytes(bytes) } });
    EXPECT_EQ(+record->Ssid.SsidLength, 7u);
    EXPECT_EQ(std::memcmp(record->Ssid.Ssid.data(), bytes.constData(), 7), 0);
}

TEST(ProfileConnection, TruncatesTheNameToThirtyTwoBytes)
{
    EXPECT_EQ(+connectionWith({ { ProfileKey::ssid, QString(32, u'a') } })->Ssid.SsidLength, 32u);
    EXPECT_EQ(+connectionWith({ { ProfileKey::ssid, QString(33, u'a') } })->Ssid.SsidLength, 32u);
}

struct SecurityCase {
    int authentication;
    int encryption;
    int network;
    int authenMode;
    int encryStatus;
    bool wpaKey;
    bool wepKeys;
};

class ProfileSecurity : public testing::TestWithParam<SecurityCase> { };

TEST_P(ProfileSecurity, DependsOnAuthenticationEncryptionAndNetworkType)
{
    const SecurityCase& expected = GetParam();
    const auto record = connectionWith(
        { authentication(expected.authentication), encryption(expected.encryption), network(expected.network) });
    EXPECT_EQ(record->AuthenMode, expected.authenMode);
    EXPECT_EQ(record->EncryStatus, expected.encryStatus);
    EXPECT_EQ(!record->pWpaKey.empty(), expected.wpaKey);
    EXPECT_EQ(!record->pWepKey[0].empty(), expected.wepKeys);
}

INSTANTIATE_TEST_SUITE_P(EveryCase, ProfileSecurity,
    testing::Values(SecurityCase { 2, 0, 1, 4, 4, true, false }, SecurityCase { 2, 1, 1, 4, 6, true, false },
        SecurityCase { 2, 7, 1, 4, 6, true, false }, SecurityCase { 2, 0, 0, 5, 4, true, false },
        SecurityCase { 2, 1, 0, 5, 6, true, false }, SecurityCase { 2, 0, 2, 5, 4, true, false },
        SecurityCase { 3, 0, 1, 4, 4, true, false }, SecurityCase { 1, 0, 1, 1, 1, false, true },
        SecurityCase { 1, 1, 1, 1, 0, false, true }, SecurityCase { 1, 2, 0, 1, 0, false, true },
        SecurityCase { 0, 1, 1, 0, 0, false, true }, SecurityCase { 0, 1, 0, 0, 0, false, true },
        SecurityCase { 0, 0, 1, 0, 1, false, false }, SecurityCase { 0, 2, 1, 0, 1, false, false },
        SecurityCase { -1, 1, 1, -1, 0, false, true }, SecurityCase { -1, 0, 1, 0, 1, false, false }));

TEST(ProfileConnection, MakesAKeyRecordForEachNonEmptyWepKey)
{
    const auto record = connectionWith({ encryption(1) });
    // Length, KeyIndex, KeyLength, BSSID, padding, KeyRSC, key; as long as Length says.
    const QByteArray fill = QByteArray("00").repeated(11);
    EXPECT_EQ(bytesOf(record->pWepKey[0]),
        "2c000000"
        "00000000"
        "05000000"
        "ffffffffffff"
        "0000"
        "0000000000000000"
        "6162636465"
            + fill);
    EXPECT_EQ(bytesOf(record->pWepKey[1]),
        "2c000000"
        "01000080"
        "05000000"
        "ffffffffffff"
        "0000"
        "0000000000000000"
        "0123456789"
            + fill);
    EXPECT_TRUE(record->pWepKey[2].empty());
    EXPECT_EQ(bytesOf(record->pWepKey[3]),
        "34000000"
        "03000000"
        "0d000000"
        "ffffffffffff"
        "0000"
        "0000000000000000"
        "666f75727468206b6579203133"
            + fill);
    EXPECT_TRUE(record->pWpaKey.empty());
}

TEST(ProfileConnection, MarksNoKeyIfTheTransmitKeyIsOutOfRange)
{
    const auto record = connectionWith({ encryption(1), { ProfileKey::wepKeyUse, u"4"_qs } });
    for (const std::size_t i : { 0U, 1U, 3U })
        EXPECT_EQ(bytesOf(record->pWepKey[i]).mid(14, 2), "00") << i;
}

TEST(ProfileConnection, DropsTheLastDigitOfAnOddKey)
{
    const auto record = connectionWith({ encryption(1), { u"WEPKey2"_qs, u"01234567891"_qs } });
    EXPECT_EQ(bytesOf(record->pWepKey[1]).mid(16, 8), "05000000");
    EXPECT_EQ(bytesOf(record->pWepKey[1]).mid(56, 10), "0123456789");
    EXPECT_TRUE(connectionWith({ encryption(1), { u"WEPKey2"_qs, u"0"_qs } })->pWepKey[1].empty());
}

TEST(ProfileConnection, DoesNotCheckTheLengthOfAStoredKey)
{
    const auto record = connectionWith({ encryption(1), { u"WEPKey1"_qs, u"abc"_qs } });
    EXPECT_EQ(record->pWepKey[0].size(), 3u + 39u);
}

// Stored keys are not checked. The record contains the first 13 bytes of a text that is too long.
TEST(ProfileConnection, TruncatesAStoredWepKeyToThirteenBytes)
{
    const QByteArray head = "34000000"
                            "00000000"
                            "0d000000"
                            "ffffffffffff"
                            "0000"
                            "0000000000000000";
    const QByteArray fill = QByteArray("00").repeated(11);
    const auto characters = connectionWith({ encryption(1), { u"WEPKey1"_qs, u"fourteen bytes and more"_qs } });
    EXPECT_EQ(bytesOf(characters->pWepKey[0]), head + "666f75727465656e2062797465" + fill);
    EXPECT_EQ(characters->pWepKey[0].size(), 52u);
    const auto digits = connectionWith(
        { encryption(1), { u"WEPKey1 Type"_qs, u"0"_qs }, { u"WEPKey1"_qs, u"000102030405060708090a0b0c0d0e0f"_qs } });
    EXPECT_EQ(bytesOf(digits->pWepKey[0]), head + "000102030405060708090a0b0c" + fill);
    // The length is one byte; 256 characters must not wrap to "not set".
    const auto longest = connectionWith({ encryption(1), { u"WEPKey1"_qs, QString(256, u'a') } });
    EXPECT_EQ(bytesOf(longest->pWepKey[0]), head + QByteArray("61").repeated(13) + fill);
}

TEST(ProfileConnection, HashesAPassphraseWithTheName)
{
    // The test vector of IEEE 802.11i.
    const auto record
        = connectionWith({ authentication(2), { ProfileKey::ssid, u"IEEE"_qs }, presharedKey(u"password"_qs) });
    EXPECT_EQ(bytesOf(record->pWpaKey),
        "47000000"
        "00000080"
        "20000000"
        "000000000000"
        "0000"
        "0000000000000000"
        "f42c6fc52df0ebef9ebb4b90b38a5f902e83fe1b135a70e23aed762e9710a12e"
            + QByteArray("00").repeated(11));
    EXPECT_EQ(record->pWpaKey.size(), 71u);
    EXPECT_TRUE(record->pWepKey[0].empty());
}

TEST(ProfileConnection, ConvertsSixtyFourCharactersAsDigits)
{
    const QString digits = u"00112233445566778899aAbBcCdDeEfF"_qs.repeated(2);
    const auto record = connectionWith({ authentication(2), presharedKey(digits) });
    EXPECT_EQ(presharedKeyIn(*record), QByteArray("00112233445566778899aabbccddeeff").repeated(2));
    const auto noDigits = connectionWith({ authentication(2), presharedKey(QString(64, u'z')) });
    EXPECT_EQ(presharedKeyIn(*noDigits), QByteArray("ef").repeated(32));
}

TEST(ProfileConnection, HashesSixtyThreeCharacters)
{
    const auto record = connectionWith({ authentication(2), presharedKey(QString(63, u'a')) });
    EXPECT_NE(presharedKeyIn(*record), QByteArray("00").repeated(32));
    EXPECT_NE(presharedKeyIn(*record), QByteArray("aa").repeated(32));
}

TEST(ProfileConnection, RefusedPassphraseGivesAKeyOfZeros)
{
    for (const QString& refused :
        { QString(65, u'a'), QString(1000, u'f'), u"caf\u00E9 au lait"_qs, u"tab\tulator"_qs })
        EXPECT_EQ(presharedKeyIn(*connectionWith({ authentication(2), presharedKey(refused) })),
            QByteArray("00").repeated(32));
}

// A name of the maximum length. Expected values from another PBKDF2 implementation.
TEST(ProfileConnection, HashesWithANameOf32Bytes)
{
    const Profile::Entry ssid { ProfileKey::ssid, u"thirty-two letters of a network!"_qs };
    EXPECT_EQ(presharedKeyIn(*connectionWith({ authentication(2), ssid, presharedKey(u"anchor and chain"_qs) })),
        "eb4507d8f927bbb4f1c7abfafdae2e10987a440b3546af745a08397c00d9a6f4");
    const Profile::Entry bytes { ProfileKey::ssid, textFromBytes(QByteArray(32, '\xFF')) };
    EXPECT_EQ(presharedKeyIn(*connectionWith({ authentication(2), bytes, presharedKey(u"anchor and chain"_qs) })),
        "555ea0d8874b324abb70782e94fe814c29385a4b5e40d784394083586afe5b4c");
}

// The record contains the first 32 bytes, but the derivation refuses the whole name. Digits need no name.
TEST(ProfileConnection, NameThatIsTooLongGivesAKeyOfZeros)
{
    for (const int length : { 33, 1000 }) {
        const Profile::Entry ssid { ProfileKey::ssid, QString(length, u'a') };
        const auto record = connectionWith({ authentication(2), ssid, presharedKey(u"anchor and chain"_qs) });
        EXPECT_EQ(presharedKeyIn(*record), QByteArray("00").repeated(32)) << length;
        EXPECT_EQ(record->pWpaKey.size(), 71u);
        EXPECT_EQ(+record->Ssid.SsidLength, 32u);
        const auto digits = connectionWith({ authentication(2), ssid, presharedKey(u"0f"_qs.repeated(32)) });
        EXPECT_EQ(presharedKeyIn(*digits), QByteArray("0f").repeated(32)) << length;
    }
    // 17 characters of two bytes each: the limit is in bytes.
    const Profile::Entry umlauts { ProfileKey::ssid, QString(17, QChar(0xE4)) };
    EXPECT_EQ(presharedKeyIn(*connectionWith({ authentication(2), umlauts, presharedKey(u"anchor and chain"_qs) })),
        QByteArray("00").repeated(32));
}

TEST(ProfileConnection, UsesAnAdHocChannelAsATablePosition)
{
    EXPECT_EQ(connectionWith({ network(0), channel("1") })->ChannelFreq, 2412000u);
    EXPECT_EQ(connectionWith({ network(0), channel("14") })->ChannelFreq, 2484000u);
    EXPECT_EQ(connectionWith({ network(0), channel("15") })->ChannelFreq, 5170000u);
    EXPECT_EQ(connectionWith({ network(0), channel("36") })->ChannelFreq, 5680000u);
    EXPECT_EQ(connectionWith({ network(0), channel("41") })->ChannelFreq, 5805000u);
}

TEST(ProfileConnection, HasNoFrequencyForAChannelBeyondTheTable)
{
    for (const char* beyond : { "42", "161", "0", "-1", "", "Auto", "-2147483648", "2147483647" })
        EXPECT_EQ(connectionWith({ network(0), channel(beyond) })->ChannelFreq, 0u) << beyond;
}

TEST(ProfileConnection, HasNoFrequencyOutsideAdHocMode)
{
    EXPECT_EQ(connectionWith({ network(1), channel("6") })->ChannelFreq, 0u);
    EXPECT_EQ(connectionWith({ network(2), channel("6") })->ChannelFreq, 0u);
}

TEST(ActivationEntry, ContainsTheWholeProfileAndItsRow)
{
    const Profile entry = activeEntry(sampleProfile(), 7);
    EXPECT_EQ(entry.size(), 26u);
    EXPECT_EQ(entry.text(u"Active Profile Flag"), u"YES"_qs);
    EXPECT_EQ(entry.text(u"Selected"), u"7"_qs);
    for (const auto& [key, text] : sampleProfile())
        EXPECT_EQ(entry.text(key), text);
    EXPECT_TRUE(isActiveEntry(entry));
}

TEST(ActivationEntry, OmitsHiddenIfInactive)
{
    const Profile entry = inactiveEntry(activeEntry(sampleProfile(), 7), -1);
    EXPECT_EQ(entry.size(), 25u);
    EXPECT_EQ(entry.text(u"Active Profile Flag"), u"NO"_qs);
    EXPECT_EQ(entry.text(u"Selected"), u"-1"_qs);
    EXPECT_FALSE(entry.contains(u"Hidden"));
    for (const auto& [key, text] : sampleProfile())
        EXPECT_EQ(entry.text(key), key == u"Hidden" ? QString() : QString(text));
    EXPECT_FALSE(isActiveEntry(entry));
}

TEST(ActivationEntry, HasItsOwnKeyOrder)
{
    std::vector<QString> keys;
    for (const auto& [key, text] : activeEntry(sampleProfile(), 7))
        keys.push_back(key);
    const std::vector<QString> expected { u"Active Profile Flag"_qs, u"Selected"_qs, u"Profile Name"_qs,
        u"AC Power CAM"_qs, u"Authentication Type"_qs, u"Channel"_qs, u"Encryption Type"_qs,
        u"Fragmentation Threshold"_qs, u"Network Type"_qs, u"Preamble Type"_qs, u"Power Save Mode"_qs,
        u"RTS Threshold"_qs, u"SSID"_qs, u"BSSID"_qs, u"Tx Power"_qs, u"WEPKey1"_qs, u"WEPKey1 Type"_qs, u"WEPKey2"_qs,
        u"WEPKey2 Type"_qs, u"WEPKey3"_qs, u"WEPKey3 Type"_qs, u"WEPKey4"_qs, u"WEPKey4 Type"_qs, u"WEPKeyUse"_qs,
        u"WPAPSK"_qs, u"Hidden"_qs };
    EXPECT_EQ(keys, expected);
}

TEST(ActivationEntry, CopiesOnlyKnownKeys)
{
    const Profile entry = activeEntry(Profile { { u"Comment"_qs, u"mine"_qs } }, 0);
    EXPECT_FALSE(entry.contains(u"Comment"));
    EXPECT_EQ(entry.text(u"SSID"), QString());
    EXPECT_TRUE(entry.contains(u"SSID"));
}

TEST(ActivationEntry, IsActiveOnlyWithTheExactFlag)
{
    for (const QString& flag : { u"NO"_qs, u"yes"_qs, u"YES "_qs, u"1"_qs, QString() })
        EXPECT_FALSE(isActiveEntry({ { ProfileKey::activeProfileFlag, flag } }));
    EXPECT_FALSE(isActiveEntry({}));
}

TEST(ActivationEntry, GivesTheSameConnectionAsItsProfile)
{
    const Profile profile = with(sampleProfile(), { encryption(1) });
    const auto ofProfile = profileConnection(profile);
    const auto ofEntry = profileConnection(activeEntry(profile, 3));
    EXPECT_EQ(ofEntry->pWepKey, ofProfile->pWepKey);
    EXPECT_EQ(ofEntry->EncryStatus, ofProfile->EncryStatus);
    EXPECT_EQ(ofEntry->Ssid.Ssid, ofProfile->Ssid.Ssid);
    EXPECT_EQ(ofEntry->TxPower, ofProfile->TxPower);
}

} // namespace
