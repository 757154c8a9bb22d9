#include "profiles/ProfileEditorValues.h"

#include "tests/profiles/SampleProfile.h"
#include "tests/support/BssidListBuilder.h"

#include <gtest/gtest.h>

namespace {

const MacAddress carried { 0x0A, 0xBC, 0xDE, 0xF0, 0x01, 0x02 };

// The controls for the sample profile.
ProfileControls sampleControls()
{
    ProfileControls controls;
    controls.ProfileName = u"PROF1"_qs;
    controls.CamWhenAcPower = 1;
    controls.Channel = u"6"_qs;
    controls.FragThresholdText = u"2346"_qs;
    controls.NetworkType = 1;
    controls.PreambleType = 2;
    controls.PSMode = 1;
    controls.RtsThresholdText = u"2347"_qs;
    controls.SSID = u"home"_qs;
    controls.TxPower = 3;
    controls.wepKeys = { WepKeyRow { 1, u"abcde"_qs, false }, WepKeyRow { 0, u"0123456789"_qs, true },
        WepKeyRow { 0, QString(), false }, WepKeyRow { 1, u"fourth key 13"_qs, false } };
    controls.WPAPreSharedKey = u"password"_qs;
    return controls;
}

QString bssidIn(const CreatedProfile& created)
{
    return created.profile.text(ProfileKey::bssid);
}

QString hiddenIn(const CreatedProfile& created)
{
    return created.profile.text(ProfileKey::hidden);
}

TEST(CreatedProfileTest, HasEveryKeyInOrder)
{
    const ProfileOrigin origin { false, { 0x00, 0x11, 0x22, 0xAA, 0xBB, 0xCC }, true };
    EXPECT_EQ(createProfileData(sampleControls(), origin, {}).profile, sampleProfile());
}

TEST(CreatedProfileTest, EditedProfileKeepsTheEditorsAddress)
{
    ProfileControls controls = sampleControls();
    controls.ssidIndex = 0; // the list is ignored
    controls.ssidItem = controls.SSID;
    Bytes list = inBuffer(bssidList({ EntryBuilder("home") }));
    for (const bool hidden : { false, true })
        for (const int networkType : { 0, 1 }) {
            controls.NetworkType = networkType;
            const auto created = createProfileData(controls, { false, carried, hidden }, list);
            EXPECT_EQ(bssidIn(created), u"0ABCDEF00102"_qs);
            EXPECT_EQ(created.bHidden, hidden);
            EXPECT_EQ(hiddenIn(created), hidden ? u"1"_qs : u"0"_qs);
        }
}

TEST(CreatedProfileTest, HasTheAddressOfThePickedEntry)
{
    Bytes list = inBuffer(bssidList({ EntryBuilder("home", 1), EntryBuilder("home", 0xE2), EntryBuilder("c", 3) }));
    ProfileControls controls = sampleControls();
    controls.ssidIndex = 1;
    controls.ssidItem = u"home"_qs;
    for (const int networkType : { 0, 1 }) {
        controls.NetworkType = networkType;
        const auto created = createProfileData(controls, { true, carried, true }, list);
        EXPECT_EQ(bssidIn(created), u"0011223344E2"_qs);
        EXPECT_EQ(hiddenIn(created), u"0"_qs);
        EXPECT_FALSE(created.bHidden);
    }
}

TEST(CreatedProfileTest, RecognisesAPickedNameThatContinuesPast32Bytes)
{
    EntryBuilder full(std::string(32, 'n'), 0xE2);
    full.fixedPart.Privacy = 1; // follows the name without a zero byte in between
    Bytes list = inBuffer(bssidList({ full }));
    ProfileControls controls = sampleControls();
    controls.ssidIndex = 0;
    controls.ssidItem = QString(32, u'n') + QChar(0xEF01);
    controls.SSID = QString(32, u'n');
    const auto created = createProfileData(controls, { true, carried, true }, list);
    EXPECT_EQ(bssidIn(created), u"0011223344E2"_qs);
    EXPECT_EQ(hiddenIn(created), u"0"_qs);
}

TEST(CreatedProfileTest, HasNoAddressIfThePickedEntryDisappeared)
{
    Bytes list = inBuffer(bssidList({ EntryBuilder("home", 1) }));
    ProfileControls controls = sampleControls();
    controls.ssidIndex = 4;
    controls.ssidItem = u"home"_qs;
    const auto created = createProfileData(controls, { true, carried, true }, list);
    EXPECT_EQ(bssidIn(created), QString());
    EXPECT_EQ(hiddenIn(created), u"0"_qs);
}

TEST(CreatedProfileTest, IsHiddenIfTheNameWasTyped)
{
    ProfileControls controls = sampleControls();
    controls.ssidIndex = 0;
    controls.ssidItem = u"another"_qs;
    const auto created = createProfileData(controls, { true, carried, false }, {});
    EXPECT_EQ(bssidIn(created), u"0ABCDEF00102"_qs);
    EXPECT_EQ(hiddenIn(created), u"1"_qs);
    EXPECT_TRUE(created.bHidden);
}

TEST(CreatedProfileTest, HasNoAddressIfAnAdHocNameWasTyped)
{
    ProfileControls controls = sampleControls();
    for (const int networkType : { 0, 2, -1 }) {
        controls.NetworkType = networkType;
        const auto created = createProfileData(controls, { true, carried, true }, {});
        EXPECT_EQ(bssidIn(created), QString());
        EXPECT_EQ(hiddenIn(created), u"0"_qs);
        EXPECT_FALSE(created.bHidden);
    }
}

TEST(CreatedProfileTest, EmptyNameWithoutASelectionIsNotAPickedItem)
{
    ProfileControls controls = sampleControls();
    controls.SSID.clear();
    EXPECT_EQ(hiddenIn(createProfileData(controls, { true, carried, false }, {})), u"1"_qs);
}

TEST(CreatedProfileTest, TransmitKeyIsTheFirstSelectedButton)
{
    const auto keyUse = [](std::array<bool, 4> on) {
        ProfileControls controls;
        for (std::size_t i = 0; i < on.size(); ++i)
            controls.wepKeys[i].radioOn = on[i];
        return createProfileData(controls, {}, {}).profile.text(ProfileKey::wepKeyUse);
    };
    EXPECT_EQ(keyUse({ true, false, false, false }), u"0"_qs);
    EXPECT_EQ(keyUse({ false, true, true, false }), u"1"_qs);
    EXPECT_EQ(keyUse({ false, false, true, true }), u"2"_qs);
    EXPECT_EQ(keyUse({ false, false, false, true }), u"3"_qs);
    EXPECT_EQ(keyUse({ false, false, false, false }), u"0"_qs);
}

TEST(CreatedProfileTest, EndsAWepKeyAtAZero)
{
    ProfileControls controls = sampleControls();
    controls.wepKeys[0].text = QString::fromUtf16(u"ab\0cd", 5);
    EXPECT_EQ(createProfileData(controls, {}, {}).profile.text(u"WEPKey1"), u"ab"_qs);
}

TEST(CreatedProfileTest, StoresTheControlsWithoutChecks)
{
    ProfileControls controls;
    controls.AuthenType = -1;
    controls.RtsThresholdText = u"many"_qs;
    const Profile profile = createProfileData(controls, {}, {}).profile;
    EXPECT_EQ(profile.text(ProfileKey::authenticationType), u"-1"_qs);
    EXPECT_EQ(profile.text(ProfileKey::rtsThreshold), u"many"_qs);
    EXPECT_EQ(profile.text(ProfileKey::channel), QString());
}

TEST(KeyControlsOf, CopiesTheKeys)
{
    ProfileControls controls = sampleControls();
    controls.AuthenType = 1;
    const KeyControls keys = keyControlsOf(controls);
    EXPECT_EQ(keys.authenTypeIndex, 1);
    EXPECT_EQ(keys.encryTypeIndex, 0);
    EXPECT_EQ(keys.wepKeys[1].text, "0123456789");
    EXPECT_EQ(keys.wepKeys[3].formatIndex, 1);
    EXPECT_EQ(selectedKeyIndex(keys.wepKeys), 1);
    EXPECT_EQ(keys.WPAPSK, "password");
    EXPECT_EQ(keyRefusal(keys), std::nullopt);
    controls.wepKeys[1].text = u"012345678"_qs;
    EXPECT_EQ(keyRefusal(keyControlsOf(controls)),
        u"Invalid WEP key 2 length. WEP should be 10 or 26 hexadecimal digits."_qs);
}

TEST(ConvertedKeys, AreConvertedWithSharedOrTheSecondEncryption)
{
    ProfileControls controls = sampleControls();
    EXPECT_EQ(convertedKeys(controls), std::nullopt);
    controls.AuthenType = 2;
    EXPECT_EQ(convertedKeys(controls), std::nullopt);
    controls.EncryType = 1;
    EXPECT_TRUE(convertedKeys(controls));
    controls.AuthenType = 1;
    controls.EncryType = 0;
    const auto keys = convertedKeys(controls);
    ASSERT_TRUE(keys);
    EXPECT_EQ((*keys)[0].length, 5);
    EXPECT_EQ((*keys)[1], (WepKey { 5, { 0x01, 0x23, 0x45, 0x67, 0x89 } }));
    EXPECT_EQ((*keys)[2], WepKey {});
    EXPECT_EQ((*keys)[3].length, 13);
}

TEST(EditedProfileTest, ShowsTheStoredValues)
{
    const EditedProfile values = editedProfile(with(sampleProfile(), { { ProfileKey::channel, u"11"_qs } }));
    EXPECT_EQ(values.ProfileName, u"PROF1"_qs);
    EXPECT_EQ(values.CamWhenAcPower, 1);
    EXPECT_EQ(values.NetworkType, 1);
    EXPECT_EQ(values.AuthenType, 0);
    EXPECT_EQ(values.Channel, 10);
    EXPECT_EQ(values.EncryType, 0);
    EXPECT_EQ(values.PreambleType, 2);
    EXPECT_TRUE(values.PSMode);
    EXPECT_EQ(values.TxPower, 3);
    EXPECT_EQ(values.SSID, u"home"_qs);
    EXPECT_EQ(values.keyFormats, (std::array { 1, 0, 0, 1 }));
    EXPECT_EQ(values.keyTexts[3], u"fourth key 13"_qs);
    EXPECT_EQ(values.transmitKey, 1u);
    EXPECT_EQ(values.WPAPreSharedKey, u"password"_qs);
    EXPECT_EQ(values.copyBSSID, (MacAddress { 0x00, 0x11, 0x22, 0xAA, 0xBB, 0xCC }));
    EXPECT_TRUE(values.bHidden);
}

TEST(EditedProfileTest, RoundTripsTheProfile)
{
    const EditedProfile values = editedProfile(sampleProfile());
    ASSERT_TRUE(values.copyBSSID);
    const auto created = createProfileData(sampleControls(), { false, *values.copyBSSID, values.bHidden }, {});
    EXPECT_EQ(created.profile, sampleProfile());
}

TEST(EditedProfileTest, ChangesTheTransmitKeyOnlyToAnExistingOne)
{
    const auto transmitKey = [](const QString& stored) {
        return editedProfile({ { ProfileKey::wepKeyUse, stored } }).transmitKey;
    };
    EXPECT_EQ(transmitKey(u"0"_qs), 0u);
    EXPECT_EQ(transmitKey(u"3"_qs), 3u);
    EXPECT_EQ(transmitKey(u"4"_qs), std::nullopt);
    EXPECT_EQ(transmitKey(u"-1"_qs), std::nullopt);
    EXPECT_EQ(transmitKey(QString()), 0u);
}

TEST(EditedProfileTest, KeepsTheAddressForAdHocProfiles)
{
    EXPECT_EQ(editedProfile(with(sampleProfile(), { { ProfileKey::networkType, u"0"_qs } })).copyBSSID, std::nullopt);
    EXPECT_TRUE(editedProfile(with(sampleProfile(), { { ProfileKey::networkType, u"2"_qs } })).copyBSSID);
}

TEST(EditedProfileTest, MissingDigitsOfAnAddressAreZeros)
{
    const auto address = [](const QString& stored) {
        return editedProfile(with(sampleProfile(), { { ProfileKey::bssid, stored } })).copyBSSID;
    };
    EXPECT_EQ(address(QString()), MacAddress {});
    EXPECT_EQ(address(u"0A1"_qs), (MacAddress { 0x0A, 0x10 }));
    EXPECT_EQ(address(u"0a1b2c3d4e5f6071"_qs), (MacAddress { 0x0A, 0x1B, 0x2C, 0x3D, 0x4E, 0x5F }));
}

TEST(EditedProfileTest, SavesPowerForEveryOtherMode)
{
    EXPECT_FALSE(editedProfile({ { ProfileKey::powerSaveMode, u"0"_qs } }).PSMode);
    EXPECT_TRUE(editedProfile({ { ProfileKey::powerSaveMode, u"2"_qs } }).PSMode);
    EXPECT_FALSE(editedProfile({}).PSMode);
}

TEST(AuthenticationChoiceTest, DependsOnTheNetworksMode)
{
    EXPECT_EQ(authenticationChoiceOf(0), (AuthenticationChoice { 0, false }));
    EXPECT_EQ(authenticationChoiceOf(1), (AuthenticationChoice { 1, false }));
    EXPECT_EQ(authenticationChoiceOf(2), (AuthenticationChoice { 0, false }));
    EXPECT_EQ(authenticationChoiceOf(3), (AuthenticationChoice { 2, true }));
    EXPECT_EQ(authenticationChoiceOf(4), (AuthenticationChoice { 2, true }));
    EXPECT_EQ(authenticationChoiceOf(5), (AuthenticationChoice { 0, false })); // WPA-None
    EXPECT_EQ(authenticationChoiceOf(-1), (AuthenticationChoice { 0, false }));
}

TEST(EncryptionIndexTest, DependsOnTheNetworksStatus)
{
    for (const int authentication : { 0, 1, -1 })
        for (int status = -1; status < 9; ++status)
            EXPECT_EQ(encryptionIndexOf(status, authentication), status == 0 ? 1 : 0);
    for (int status = -1; status < 9; ++status)
        EXPECT_EQ(encryptionIndexOf(status, 2), status == 6 ? 1 : 0);
}

} // namespace
