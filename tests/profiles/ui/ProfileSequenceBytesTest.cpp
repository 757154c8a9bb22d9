// The whole conversation with the driver that a stored profile makes, request by request as its bytes, for the kinds
// of profiles that are met less often.

#include "platform/NetworkName.h"
#include "survey/ui/SiteSurveyPageController.h"
#include "tests/profiles/ui/ProfilePageFixture.h"
#include "tests/support/RecordedRequests.h"
#include "tests/support/RecordingAssertionHandler.h"

namespace {

using Lines = std::vector<QByteArray>;

QByteArray hexOf(const std::vector<std::byte>& bytes)
{
    return QByteArray(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size())).toHex();
}

QByteArray zeros(int count)
{
    return QByteArray("00").repeated(count);
}

// The sample's settings: preamble 2, thresholds 2347 and 2346, a quarter of the power.
Lines settings(const char* networkType, const char* authenMode, const char* encryStatus)
{
    return {
        "0d810115 00000000", // OID_802_11_DISASSOCIATE
        QByteArray("0d810108 ") + networkType, // OID_802_11_INFRASTRUCTURE_MODE
        "0df10101 02000000", // VX_OID_802_11_PREAMBLE
        "0d81020a 2b090000", // OID_802_11_RTS_THRESHOLD
        "0d810209 2a090000", // OID_802_11_FRAGMENTATION_THRESHOLD
        QByteArray("0d810118 ") + authenMode, // OID_802_11_AUTHENTICATION_MODE
        QByteArray("0d81011b ") + encryStatus, // OID_802_11_ENCRYPTION_STATUS
        "0df10118 19000000", // VX_OID_802_11_TX_POWER
    };
}

// The sample's WEP keys, of which the second transmits and the third is missing.
Lines wepKeys()
{
    return {
        "0d81011d 2c000000"
        "00000000"
        "05000000"
        "ffffffffffff0000"
        "0000000000000000"
        "6162636465"
            + zeros(11),
        "0d81011d 2c000000"
        "01000080"
        "05000000"
        "ffffffffffff0000"
        "0000000000000000"
        "0123456789"
            + zeros(11),
        "0d81011e 10000000"
        "02000000"
        "ffffffffffff0000", // OID_802_11_REMOVE_KEY
        "0d81011d 34000000"
        "03000000"
        "0d000000"
        "ffffffffffff0000"
        "0000000000000000"
        "666f75727468206b6579203133"
            + zeros(11),
    };
}

QByteArray presharedKey(const char* oid, const QByteArray& material)
{
    return QByteArray(oid)
        + " 47000000"
          "00000080"
          "20000000"
          "0000000000000000"
          "0000000000000000"
        + material + zeros(11);
}

Lines powerModeAndSsid(const char* powerMode, const QByteArray& ssid)
{
    return { QByteArray("0d810216 ") + powerMode, "0d810102 " + ssid };
}

// Channel 6, 2437000 kHz; all else in the configuration is the card's.
Lines channelAndSsid(const QByteArray& ssid)
{
    return {
        "0d010211 " + zeros(32), // OID_802_11_CONFIGURATION, the query
        "0d810211 20000000"
        "c8000000"
        "09000000"
        "882f2500"
        "10000000"
        "010000000200000003000000",
        "0d810102 " + ssid,
    };
}

const QByteArray home = "04000000"
                        "686f6d65"
    + zeros(28);
const QByteArray longName = "20000000" + QByteArray("thirty-two letters of a network!").toHex();
const QByteArray bytesOfName = "20000000" + QByteArray("ff").repeated(31) + "01";

struct Sequence {
    std::string name;
    std::vector<Profile::Entry> changes; // to the sample: open, infrastructure, channel 6
    std::vector<Lines> expected;
};

void PrintTo(const Sequence& sequence, std::ostream* stream)
{
    *stream << sequence.name;
}

Profile::Entry entry(const QString& key, const char* text)
{
    return { key, QString::fromLatin1(text) };
}

std::vector<Sequence> sequences()
{
    const auto adHoc = entry(ProfileKey::networkType, "0");
    const auto shared = entry(ProfileKey::authenticationType, "1");
    const auto wpa = entry(ProfileKey::authenticationType, "2");
    const auto second = entry(ProfileKey::encryptionType, "1"); // WEP, or AES
    const auto digits = entry(ProfileKey::wpaPsk, "00112233445566778899AABBCCDDEEFFffeeddccbbaa99887766554433221100");
    const QByteArray keyOfDigits = "00112233445566778899aabbccddeeffffeeddccbbaa99887766554433221100";
    const auto passphrase = entry(ProfileKey::wpaPsk, "anchor and chain");
    const auto thirtyTwo = entry(ProfileKey::ssid, "thirty-two letters of a network!");
    const QByteArray keyOfThirtyTwo = "eb4507d8f927bbb4f1c7abfafdae2e10987a440b3546af745a08397c00d9a6f4";
    return {
        { "AdHocSharedWithNone", { adHoc, shared },
            { settings("00000000", "01000000", "01000000"), wepKeys(), channelAndSsid(home) } },
        { "WpaNoneTkipOf64Digits", { adHoc, wpa, digits },
            { settings("00000000", "05000000", "04000000"), { presharedKey("0d81011d", keyOfDigits) },
                channelAndSsid(home) } },
        { "WpaNoneAesOf64Digits", { adHoc, wpa, second, digits },
            { settings("00000000", "05000000", "06000000"), { presharedKey("0d81011d", keyOfDigits) },
                channelAndSsid(home) } },
        { "OpenWithA32ByteName", { thirtyTwo },
            { settings("01000000", "00000000", "01000000"), powerModeAndSsid("01000000", longName) } },
        { "OpenWithA32ByteNameThatIsNoText", { { ProfileKey::ssid, textFromBytes(QByteArray(31, '\xFF') + '\x01') } },
            { settings("01000000", "00000000", "01000000"), powerModeAndSsid("01000000", bytesOfName) } },
        { "WpaPskAesWithA32ByteName", { wpa, second, thirtyTwo, passphrase },
            { settings("01000000", "04000000", "06000000"), { presharedKey("0df10116", keyOfThirtyTwo) },
                powerModeAndSsid("01000000", longName) } },
        { "WpaNoneTkipWithA32ByteName", { adHoc, wpa, thirtyTwo, passphrase },
            { settings("00000000", "05000000", "04000000"), { presharedKey("0d81011d", keyOfThirtyTwo) },
                channelAndSsid(longName) } },
        // The editor stores 0 and 1; the number of a file that was typed goes to the driver as it stands.
        { "ConstantlyAwake", { entry(ProfileKey::powerSaveMode, "0") },
            { settings("01000000", "00000000", "01000000"), powerModeAndSsid("00000000", home) } },
        { "PowerSaveModeOf2", { entry(ProfileKey::powerSaveMode, "2") },
            { settings("01000000", "00000000", "01000000"), powerModeAndSsid("02000000", home) } },
        { "PowerSaveModeBelow0", { entry(ProfileKey::powerSaveMode, "-2") },
            { settings("01000000", "00000000", "01000000"), powerModeAndSsid("feffffff", home) } },
        { "PowerSaveModeThatIsNoNumber", { entry(ProfileKey::powerSaveMode, "PSMode") },
            { settings("01000000", "00000000", "01000000"), powerModeAndSsid("00000000", home) } },
        { "ConstantlyAwakeWithWep", { second, entry(ProfileKey::powerSaveMode, "0") },
            { settings("01000000", "00000000", "00000000"), wepKeys(), powerModeAndSsid("00000000", home) } },
        { "AdHocHasNoPowerSaveMode", { adHoc, entry(ProfileKey::powerSaveMode, "2") },
            { settings("00000000", "00000000", "01000000"), channelAndSsid(home) } },
    };
}

class ProfileSequenceBytesTest : public ProfilePageFixture, public testing::WithParamInterface<Sequence> {
protected:
    RecordingAssertionHandler assertions;
    SiteSurveyPageController survey { adapter, runLoop, assertions, alerts, sheets };
    ProfilePageController profiles { runLoop, alerts, sheets, store, survey };
};

TEST_P(ProfileSequenceBytesTest, IsSentAsAWhole)
{
    survey.awakeFromNib();
    profiles.awakeFromNib();
    registry.answer(OID_802_11_CONFIGURATION,
        bytesOf({ 32, 0, 0, 0, 0xC8, 0, 0, 0, 9, 0, 0, 0, 0xE0, 0xCD, 0x24, 0, 16, 0, 0, 0, 1, 0, 0, 0, 2, 0, 0, 0, 3,
            0, 0, 0 }));
    Profile profile = sampleProfile();
    for (const auto& [key, text] : GetParam().changes)
        profile.set(key, text);
    store.saveRecords({ profile });
    profiles.RefreshProfileList();
    registry.forgetCalls();
    profiles.findChild<TableView*>(u"profileList"_qs)->selectRowNumber(0);
    profiles.OnActivate();
    survey.DoTask();

    Lines expected;
    for (const Lines& part : GetParam().expected)
        expected.insert(expected.end(), part.begin(), part.end());
    Lines sent;
    for (const RecordedRequest& request : recordedRequests(registry))
        sent.push_back(QByteArray::number(request.oid, 16).rightJustified(8, '0') + ' ' + hexOf(request.input));
    EXPECT_EQ(sent, expected);
}

INSTANTIATE_TEST_SUITE_P(EveryKind, ProfileSequenceBytesTest, testing::ValuesIn(sequences()),
    [](const auto& tested) { return tested.param.name; });

} // namespace
