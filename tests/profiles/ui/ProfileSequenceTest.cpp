// From activating a stored profile to every byte sent to the driver, for each kind of profile.
// The expected bytes are literals and do not depend on production code.

#include "platform/ByteText.h"
#include "survey/ui/SiteSurveyPageController.h"
#include "tests/profiles/ui/ProfilePageFixture.h"
#include "tests/support/ExpectedRequests.h"
#include "tests/support/RecordingAssertionHandler.h"

#include <string>

namespace {

using Changes = std::initializer_list<Profile::Entry>;

Requests settings(int networkType, int authenMode, int encryStatus, int preamble)
{
    const ExpectedRadio radio {
        .preamble = preamble,
        .rtsThreshold = { 0x2B, 0x09, 0, 0 }, // 2347 bytes
        .fragmentationThreshold = { 0x2A, 0x09, 0, 0 }, // 2346 bytes
        .txPowerPercent = 25,
    };
    return expectedSettings(radio, networkType, authenMode, encryStatus);
}

// The first requests of every profile.
Requests settings(int networkType, int authenMode, int encryStatus)
{
    return settings(networkType, authenMode, encryStatus, 1);
}

// The first requests of the sample profile, which has another preamble.
Requests sampleSettings(int networkType, int authenMode, int encryStatus)
{
    return settings(networkType, authenMode, encryStatus, 2);
}

const Bytes ieee = bytesOfText("IEEE");
const Bytes home = bytesOfText("home"); // the sample's

// An infrastructure profile sets the power mode and associates by SSID, not by BSSID.
Requests powerModeAndSsid(const FourBytes& powerMode = { 1, 0, 0, 0 }, const Bytes& ssid = ieee)
{
    return { setPowerMode(powerMode), associateBySsid(ssid) };
}

// An ad hoc profile sets the channel instead of the power mode; the rest of the configuration does not change.
Requests channelAndSsid(const FourBytes& frequencyKhz, const Bytes& ssid = ieee)
{
    return setFrequency(frequencyKhz) + Requests { associateBySsid(ssid) };
}

Requests channelSixAndSsid(const Bytes& ssid)
{
    return channelAndSsid({ 0x88, 0x2F, 0x25, 0 }, ssid); // 2437000 kHz
}

// The keys of the sample profile: the second is the transmit key, the third is not set.
Requests wepKeys(const Bytes& second = bytesOf({ 0x01, 0x23, 0x45, 0x67, 0x89 }))
{
    return {
        addKey(0, false, bytesOfText("abcde")),
        addKey(1, true, second),
        removeKey(2),
        addKey(3, false, bytesOfText("fourth key 13")),
    };
}

Bytes keyOfDigits()
{
    return bytesOf({
        0x0f, 0x1e, 0x2d, 0x3c, 0x4b, 0x5a, 0x69, 0x78, //
        0x87, 0x96, 0xa5, 0xb4, 0xc3, 0xd2, 0xe1, 0xf0, //
        0x00, 0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77, //
        0x88, 0x99, 0xaa, 0xbb, 0xcc, 0xdd, 0xee, 0xff, //
    });
}

Bytes keyOfMirroredDigits()
{
    return bytesOf({
        0x00, 0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77, //
        0x88, 0x99, 0xaa, 0xbb, 0xcc, 0xdd, 0xee, 0xff, //
        0xff, 0xee, 0xdd, 0xcc, 0xbb, 0xaa, 0x99, 0x88, //
        0x77, 0x66, 0x55, 0x44, 0x33, 0x22, 0x11, 0x00, //
    });
}

// The key of passphrase "anchor and chain" and SSID "thirty-two letters of a network!".
Bytes keyOfLongName()
{
    return bytesOf({
        0xeb, 0x45, 0x07, 0xd8, 0xf9, 0x27, 0xbb, 0xb4, //
        0xf1, 0xc7, 0xab, 0xfa, 0xfd, 0xae, 0x2e, 0x10, //
        0x98, 0x7a, 0x44, 0x0b, 0x35, 0x46, 0xaf, 0x74, //
        0x5a, 0x08, 0x39, 0x7c, 0x00, 0xd9, 0xa6, 0xf4, //
    });
}

// Every kind of profile stores all keys, an address and a channel.
Profile profileOf(
    const QString& networkType, const QString& authentication, const QString& encryption, Changes changes = {})
{
    const Profile profile = with(sampleProfile(u"chosen"_qs),
        { { ProfileKey::networkType, networkType }, { ProfileKey::authenticationType, authentication },
            { ProfileKey::encryptionType, encryption }, { ProfileKey::ssid, u"IEEE"_qs },
            { ProfileKey::preambleType, u"1"_qs } });
    return with(profile, changes);
}

Profile infrastructure(int authentication, int encryption, Changes changes = {})
{
    return profileOf(u"1"_qs, QString::number(authentication), QString::number(encryption), changes);
}

Profile adHoc(int authentication, int encryption, Changes changes = {})
{
    return profileOf(u"0"_qs, QString::number(authentication), QString::number(encryption), changes);
}

Profile::Entry entry(const QString& key, const char* text)
{
    return { key, QString::fromLatin1(text) };
}

// The sample is an open infrastructure profile on channel 6.
Profile sample(Changes changes)
{
    return with(sampleProfile(u"chosen"_qs), changes);
}

struct Activation {
    std::string name;
    Profile profile;
    Requests expected;
};

void PrintTo(const Activation& activation, std::ostream* stream)
{
    *stream << activation.name;
}

std::vector<Activation> infrastructureProfiles()
{
    const Bytes fiveBytes = bytesOf({ 1, 2, 3, 4, 5 });
    return {
        { "Open", infrastructure(0, 0), settings(1, 0, 1) + powerModeAndSsid() },
        { "SharedWithNone", infrastructure(1, 0), settings(1, 1, 1) + wepKeys() + powerModeAndSsid() },
        { "SharedWithWep", infrastructure(1, 1), settings(1, 1, 0) + wepKeys() + powerModeAndSsid() },
        { "OpenWithWep", infrastructure(0, 1), settings(1, 0, 0) + wepKeys() + powerModeAndSsid() },
        { "OpenWithWepOfOddLength", infrastructure(0, 1, { { u"WEPKey2"_qs, u"01020304056"_qs } }),
            settings(1, 0, 0) + wepKeys(fiveBytes) + powerModeAndSsid() },
        { "WpaPskTkip", infrastructure(2, 0), settings(1, 4, 4) + addWpa(publishedKey()) + powerModeAndSsid() },
        { "WpaPskAes", infrastructure(2, 1), settings(1, 4, 6) + addWpa(publishedKey()) + powerModeAndSsid() },
        { "WpaPskOf64Digits",
            infrastructure(2, 1,
                { { ProfileKey::wpaPsk, u"0f1e2d3c4b5a69788796a5b4c3d2e1f000112233445566778899AABBCCDDEEFF"_qs } }),
            settings(1, 4, 6) + addWpa(keyOfDigits()) + powerModeAndSsid() },
    };
}

std::vector<Activation> adHocProfiles()
{
    const Requests channelSix = channelSixAndSsid(ieee);
    return {
        { "AdHocOpenOnChannel6", adHoc(0, 0), settings(0, 0, 1) + channelSix },
        // Row 36 of the table, which is not channel 36: 5680000 kHz.
        { "AdHocOpenOnChannel36", adHoc(0, 0, { { ProfileKey::channel, u"36"_qs } }),
            settings(0, 0, 1) + channelAndSsid({ 0x80, 0xAB, 0x56, 0 }) },
        // A row beyond the table.
        { "AdHocOpenOnChannel165", adHoc(0, 0, { { ProfileKey::channel, u"165"_qs } }),
            settings(0, 0, 1) + channelAndSsid({ 0, 0, 0, 0 }) },
        { "AdHocOpenWithWep", adHoc(0, 1), settings(0, 0, 0) + wepKeys() + channelSix },
        { "AdHocSharedWithWep", adHoc(1, 1), settings(0, 1, 0) + wepKeys() + channelSix },
        { "WpaNoneTkip", adHoc(2, 0), settings(0, 5, 4) + addWpaNone(publishedKey()) + channelSix },
        { "WpaNoneAes", adHoc(2, 1), settings(0, 5, 6) + addWpaNone(publishedKey()) + channelSix },
    };
}

std::vector<Activation> rareAdHocProfiles()
{
    const auto adHoc = entry(ProfileKey::networkType, "0");
    const auto shared = entry(ProfileKey::authenticationType, "1");
    const auto wpa = entry(ProfileKey::authenticationType, "2");
    const auto aes = entry(ProfileKey::encryptionType, "1");
    const auto digits = entry(ProfileKey::wpaPsk, "00112233445566778899AABBCCDDEEFFffeeddccbbaa99887766554433221100");
    const Requests channelSix = channelSixAndSsid(home);
    return {
        { "AdHocSharedWithNone", sample({ adHoc, shared }), sampleSettings(0, 1, 1) + wepKeys() + channelSix },
        { "WpaNoneTkipOf64Digits", sample({ adHoc, wpa, digits }),
            sampleSettings(0, 5, 4) + addWpaNone(keyOfMirroredDigits()) + channelSix },
        { "WpaNoneAesOf64Digits", sample({ adHoc, wpa, aes, digits }),
            sampleSettings(0, 5, 6) + addWpaNone(keyOfMirroredDigits()) + channelSix },
    };
}

std::vector<Activation> longNames()
{
    const auto adHoc = entry(ProfileKey::networkType, "0");
    const auto wpa = entry(ProfileKey::authenticationType, "2");
    const auto aes = entry(ProfileKey::encryptionType, "1");
    const auto passphrase = entry(ProfileKey::wpaPsk, "anchor and chain");
    const auto letters = entry(ProfileKey::ssid, "thirty-two letters of a network!");
    const Bytes bytesOfLetters = bytesOfText("thirty-two letters of a network!");
    const Profile::Entry noText { ProfileKey::ssid, textFromBytes(QByteArray(31, '\xFF') + '\x01') };
    Bytes bytesOfNoText(31, std::byte { 0xFF });
    bytesOfNoText.push_back(std::byte { 1 });
    return {
        { "OpenWithA32ByteName", sample({ letters }),
            sampleSettings(1, 0, 1) + powerModeAndSsid({ 1, 0, 0, 0 }, bytesOfLetters) },
        { "OpenWithA32ByteNameThatIsNoText", sample({ noText }),
            sampleSettings(1, 0, 1) + powerModeAndSsid({ 1, 0, 0, 0 }, bytesOfNoText) },
        { "WpaPskAesWithA32ByteName", sample({ wpa, aes, letters, passphrase }),
            sampleSettings(1, 4, 6) + addWpa(keyOfLongName()) + powerModeAndSsid({ 1, 0, 0, 0 }, bytesOfLetters) },
        { "WpaNoneTkipWithA32ByteName", sample({ adHoc, wpa, letters, passphrase }),
            sampleSettings(0, 5, 4) + addWpaNone(keyOfLongName()) + channelSixAndSsid(bytesOfLetters) },
    };
}

// The editor stores 0 and 1; other numbers in the file are sent to the driver unchanged.
std::vector<Activation> powerSaveModes()
{
    const auto mode = [](const char* text) { return entry(ProfileKey::powerSaveMode, text); };
    const auto adHoc = entry(ProfileKey::networkType, "0");
    const auto wep = entry(ProfileKey::encryptionType, "1");
    return {
        { "ConstantlyAwake", sample({ mode("0") }), sampleSettings(1, 0, 1) + powerModeAndSsid({ 0, 0, 0, 0 }, home) },
        { "PowerSaveModeOf2", sample({ mode("2") }), sampleSettings(1, 0, 1) + powerModeAndSsid({ 2, 0, 0, 0 }, home) },
        { "PowerSaveModeBelow0", sample({ mode("-2") }),
            sampleSettings(1, 0, 1) + powerModeAndSsid({ 0xFE, 0xFF, 0xFF, 0xFF }, home) },
        { "PowerSaveModeThatIsNoNumber", sample({ mode("PSMode") }),
            sampleSettings(1, 0, 1) + powerModeAndSsid({ 0, 0, 0, 0 }, home) },
        { "ConstantlyAwakeWithWep", sample({ wep, mode("0") }),
            sampleSettings(1, 0, 0) + wepKeys() + powerModeAndSsid({ 0, 0, 0, 0 }, home) },
        { "AdHocHasNoPowerSaveMode", sample({ adHoc, mode("2") }), sampleSettings(0, 0, 1) + channelSixAndSsid(home) },
    };
}

std::string nameOf(const testing::TestParamInfo<Activation>& info)
{
    return info.param.name;
}

// The profile page connected to the site survey, as in the application.
class ProfileSequenceTest : public ProfilePageFixture, public testing::WithParamInterface<Activation> {
protected:
    ProfileSequenceTest()
    {
        survey.awakeFromNib();
        profiles.awakeFromNib();
        profiles.show();
        registry.answer(OID_802_11_CONFIGURATION, configuration({ 0xE0, 0xCD, 0x24, 0 })); // 2412000 kHz
    }

    void activate(const Profile& profile)
    {
        store.saveRecords({ sampleProfile(u"another"_qs), profile });
        profiles.RefreshProfileList();
        profiles.findChild<TableView*>(u"profileList"_qs)->selectRowNumber(1);
        QTest::mouseClick(profiles.findChild<QPushButton*>(u"Activate"_qs), Qt::LeftButton);
    }

    Requests requestsOfNextTask()
    {
        EXPECT_EQ(recordedRequests(registry), Requests()) << "nothing is sent before the task is executed";
        survey.DoTask();
        EXPECT_EQ(TaskQueue::GetTaskObject(), nullptr);
        Requests sent = recordedRequests(registry);
        registry.forgetCalls();
        return sent;
    }

    RecordingAssertionHandler assertions;
    SiteSurveyPageController survey { adapter, runLoop, assertions, alerts, sheets };
    ProfilePageController profiles { adapter, runLoop, alerts, sheets, store, survey };
};

TEST_P(ProfileSequenceTest, SendsTheExactRequests)
{
    registry.forgetCalls();
    activate(GetParam().profile);
    EXPECT_EQ(requestsOfNextTask(), GetParam().expected);
    profiles.CheckProfileSettingForConnect();
    EXPECT_EQ(requestsOfNextTask(), GetParam().expected) << "the stored copy is applied as the profile was";
}

INSTANTIATE_TEST_SUITE_P(EveryKind, ProfileSequenceTest, testing::ValuesIn(infrastructureProfiles()), nameOf);
INSTANTIATE_TEST_SUITE_P(EveryAdHocKind, ProfileSequenceTest, testing::ValuesIn(adHocProfiles()), nameOf);
INSTANTIATE_TEST_SUITE_P(EveryRareAdHocKind, ProfileSequenceTest, testing::ValuesIn(rareAdHocProfiles()), nameOf);
INSTANTIATE_TEST_SUITE_P(EveryLongName, ProfileSequenceTest, testing::ValuesIn(longNames()), nameOf);
INSTANTIATE_TEST_SUITE_P(EveryPowerSaveMode, ProfileSequenceTest, testing::ValuesIn(powerSaveModes()), nameOf);

} // namespace
