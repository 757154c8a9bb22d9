// From a stored profile that is activated on its page to every byte that the driver is sent, for each kind of profile.
// What is expected is written out and made by nothing that the utility itself uses.

#include "survey/ui/SiteSurveyPageController.h"
#include "tests/profiles/ui/ProfilePageFixture.h"
#include "tests/support/RecordedRequests.h"
#include "tests/support/RecordingAssertionHandler.h"

#include <string>

namespace {

using Requests = std::vector<RecordedRequest>;
using Changes = std::initializer_list<Profile::Entry>;

Requests operator+(Requests first, const Requests& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

// What every profile begins with.
Requests settings(int networkType, int authenMode, int encryStatus)
{
    return {
        { 0x0D810115, bytesOf({ 0, 0, 0, 0 }) }, // OID_802_11_DISASSOCIATE
        { 0x0D810108, bytesOf({ networkType, 0, 0, 0 }) }, // OID_802_11_INFRASTRUCTURE_MODE
        { 0x0DF10101, bytesOf({ 1, 0, 0, 0 }) }, // VX_OID_802_11_PREAMBLE
        { 0x0D81020A, bytesOf({ 0x2B, 0x09, 0, 0 }) }, // OID_802_11_RTS_THRESHOLD: 2347 bytes
        { 0x0D810209, bytesOf({ 0x2A, 0x09, 0, 0 }) }, // OID_802_11_FRAGMENTATION_THRESHOLD: 2346 bytes
        { 0x0D810118, bytesOf({ authenMode, 0, 0, 0 }) }, // OID_802_11_AUTHENTICATION_MODE
        { 0x0D81011B, bytesOf({ encryStatus, 0, 0, 0 }) }, // OID_802_11_ENCRYPTION_STATUS
        { 0x0DF10118, bytesOf({ 25, 0, 0, 0 }) }, // VX_OID_802_11_TX_POWER: 25 percent
    };
}

// An infrastructure profile has its power mode set, and always associates by name, not by its address.
Requests powerModeAndSsid()
{
    Bytes ssid = bytesOf({ 4, 0, 0, 0, 'I', 'E', 'E', 'E' });
    ssid.resize(4 + 32);
    return {
        { 0x0D810216, bytesOf({ 1, 0, 0, 0 }) }, // OID_802_11_POWER_MODE
        { 0x0D810102, ssid }, // OID_802_11_SSID
    };
}

// The card's configuration, on a frequency of these four bytes.
Bytes configuration(std::initializer_list<int> frequencyKhz)
{
    Bytes record = bytesOf({
        32, 0, 0, 0, // Length
        0xC8, 0, 0, 0, // BeaconPeriod: 200 Kusec
        9, 0, 0, 0, // ATIMWindow
    });
    append(record, bytesOf(frequencyKhz)); // DSConfig
    append(record,
        bytesOf({
            16, 0, 0, 0, // FHConfig.Length
            1, 0, 0, 0, // FHConfig.HopPattern
            2, 0, 0, 0, // FHConfig.HopSet
            3, 0, 0, 0, // FHConfig.DwellTime
        }));
    return record;
}

// An ad hoc profile has its channel set instead of the power mode; the rest of the configuration stays.
Requests channelAndSsid(std::initializer_list<int> frequencyKhz)
{
    return Requests {
        { 0x0D010211, Bytes(32), 32 }, // OID_802_11_CONFIGURATION, the query
        { 0x0D810211, configuration(frequencyKhz) }, // OID_802_11_CONFIGURATION
        powerModeAndSsid().back(),
    };
}

RecordedRequest removeKey(int index)
{
    return { 0x0D81011E, // OID_802_11_REMOVE_KEY
        bytesOf({
            16, 0, 0, 0, // Length
            index, 0, 0, 0, // KeyIndex
            0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, // BSSID
            0, 0, // padding
        }) };
}

RecordedRequest addKey(int index, bool transmit, const Bytes& material)
{
    const int length = static_cast<int>(material.size());
    Bytes record = bytesOf({
        length + 39, 0, 0, 0, // Length
        index, 0, 0, transmit ? 0x80 : 0, // KeyIndex
        length, 0, 0, 0, // KeyLength
        0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, // BSSID
        0, 0, // padding
        0, 0, 0, 0, 0, 0, 0, 0, // KeyRSC
    });
    append(record, material);
    append(record, bytesOf({ 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0 })); // what Length counts behind the key
    return { 0x0D81011D, record }; // OID_802_11_ADD_KEY
}

// The keys of the sample profile, the second transmitting; there is no third.
Requests wepKeys(const Bytes& second = bytesOf({ 0x01, 0x23, 0x45, 0x67, 0x89 }))
{
    return {
        addKey(0, false, bytesOf({ 'a', 'b', 'c', 'd', 'e' })),
        addKey(1, true, second),
        removeKey(2),
        addKey(3, false, bytesOf({ 'f', 'o', 'u', 'r', 't', 'h', ' ', 'k', 'e', 'y', ' ', '1', '3' })),
    };
}

Bytes presharedKeyRecord(const Bytes& material)
{
    Bytes record = bytesOf({
        71, 0, 0, 0, // Length: 32 + 39
        0, 0, 0, 0x80, // KeyIndex: 0, transmit key
        32, 0, 0, 0, // KeyLength
        0, 0, 0, 0, 0, 0, // BSSID
        0, 0, // padding
        0, 0, 0, 0, 0, 0, 0, 0, // KeyRSC
    });
    append(record, material);
    append(record, bytesOf({ 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0 })); // what Length counts behind the key
    return record;
}

// The key of passphrase "password" and SSID "IEEE" that IEEE 802.11i publishes.
Bytes publishedKey()
{
    return bytesOf({
        0xf4, 0x2c, 0x6f, 0xc5, 0x2d, 0xf0, 0xeb, 0xef, //
        0x9e, 0xbb, 0x4b, 0x90, 0xb3, 0x8a, 0x5f, 0x90, //
        0x2e, 0x83, 0xfe, 0x1b, 0x13, 0x5a, 0x70, 0xe2, //
        0x3a, 0xed, 0x76, 0x2e, 0x97, 0x10, 0xa1, 0x2e, //
    });
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

Requests addWpa(const Bytes& material)
{
    return { { 0x0DF10116, presharedKeyRecord(material) } }; // VX_OID_802_11_ADD_WPA
}

Requests addWpaNone(const Bytes& material)
{
    return { { 0x0D81011D, presharedKeyRecord(material) } }; // OID_802_11_ADD_KEY
}

// Whatever its kind, the profile stores a whole set of keys, an address, and a channel.
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
    const auto channelSix = channelAndSsid({ 0x88, 0x2F, 0x25, 0 }); // 2437000 kHz
    return {
        { "AdHocOpenOnChannel6", adHoc(0, 0), settings(0, 0, 1) + channelSix },
        // Row 36 of the table, which is not that of channel 36: 5680000 kHz.
        { "AdHocOpenOnChannel36", adHoc(0, 0, { { ProfileKey::channel, u"36"_qs } }),
            settings(0, 0, 1) + channelAndSsid({ 0x80, 0xAB, 0x56, 0 }) },
        // A row that the table does not have.
        { "AdHocOpenOnChannel165", adHoc(0, 0, { { ProfileKey::channel, u"165"_qs } }),
            settings(0, 0, 1) + channelAndSsid({ 0, 0, 0, 0 }) },
        { "AdHocOpenWithWep", adHoc(0, 1), settings(0, 0, 0) + wepKeys() + channelSix },
        { "AdHocSharedWithWep", adHoc(1, 1), settings(0, 1, 0) + wepKeys() + channelSix },
        { "WpaNoneTkip", adHoc(2, 0), settings(0, 5, 4) + addWpaNone(publishedKey()) + channelSix },
        { "WpaNoneAes", adHoc(2, 1), settings(0, 5, 6) + addWpaNone(publishedKey()) + channelSix },
    };
}

// The profile page with the site survey behind it, as the application wires them.
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
    ProfilePageController profiles { runLoop, alerts, sheets, store, survey };
};

TEST_P(ProfileSequenceTest, SendsEveryByteInItsOrder)
{
    registry.forgetCalls();
    activate(GetParam().profile);
    EXPECT_EQ(requestsOfNextTask(), GetParam().expected);
    profiles.CheckProfileSettingForConnect();
    EXPECT_EQ(requestsOfNextTask(), GetParam().expected) << "the stored copy is applied as the profile was";
}

INSTANTIATE_TEST_SUITE_P(EveryKind, ProfileSequenceTest, testing::ValuesIn(infrastructureProfiles()),
    [](const testing::TestParamInfo<Activation>& info) { return info.param.name; });
INSTANTIATE_TEST_SUITE_P(EveryAdHocKind, ProfileSequenceTest, testing::ValuesIn(adHocProfiles()),
    [](const testing::TestParamInfo<Activation>& info) { return info.param.name; });

} // namespace
