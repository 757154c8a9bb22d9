#include "profiles/ProfileEditorValues.h"

#include "crypto/HexDigits.h"
#include "driver/BssidList.h"
#include "platform/ByteText.h"
#include "profiles/ProfileEditorRules.h"
#include "survey/keys/KeyRules.h"

#include <QByteArray>
#include <QChar>

#include <algorithm>
#include <string>

namespace {

struct Address {
    QString bssid;
    bool hidden { false };
};

QString bssidText(const MacAddress& address)
{
    QString text;
    for (const std::uint8_t byte : address)
        text += QStringLiteral("%1").arg(uint { byte }, 2, 16, QLatin1Char('0')).toUpper();
    return text;
}

// Missing digits count as zeros.
MacAddress addressOf(const QString& bssid)
{
    MacAddress address {};
    const std::string digits = bytesFromText(bssid).toStdString();
    AtoH(std::string_view(digits), address.data(), static_cast<std::int32_t>(address.size()));
    return address;
}

bool isPickedFromList(const ProfileControls& controls)
{
    // A scanned name of 32 bytes may continue into the bytes that follow it; the field holds at most 32 bytes.
    return controls.ssidIndex >= 0 && controls.SSID == fittingSsid(controls.ssidItem);
}

QString addressOfEntry(std::span<std::byte> list, int index)
{
    const auto entry = bssidEntryAt(list, static_cast<std::uint32_t>(index));
    return entry ? bssidText(entry->fixedPart().MacAddress) : QString();
}

Address chooseAddress(const ProfileControls& controls, const ProfileOrigin& origin, std::span<std::byte> list)
{
    if (!origin.IsNewData)
        return { bssidText(origin.copyBSSID), origin.bHidden };
    if (isPickedFromList(controls))
        return { addressOfEntry(list, controls.ssidIndex), false };
    if (controls.NetworkType == Ndis802_11Infrastructure)
        return { bssidText(origin.copyBSSID), true };
    return {};
}

// The stored text is zero-terminated.
QString upToZero(const QString& text)
{
    return text.section(QChar(u'\0'), 0, 0);
}

void setKeys(Profile& profile, const ProfileControls& controls)
{
    for (std::size_t i = 0; i < controls.wepKeys.size(); ++i) {
        profile.set(ProfileKey::wepKey(i), upToZero(controls.wepKeys[i].text));
        profile.set(ProfileKey::wepKeyType(i), controls.wepKeys[i].format);
    }
    profile.set(ProfileKey::wepKeyUse, selectedKeyIndex(wepKeyControlsOf(controls.wepKeys)));
    profile.set(ProfileKey::wpaPsk, controls.WPAPreSharedKey);
}

std::optional<std::size_t> transmitKeyOf(const Profile& profile)
{
    const int key = profile.integer(ProfileKey::wepKeyUse);
    const bool exists = key >= 0 && static_cast<std::size_t>(key) < wepKeyCount;
    return exists ? std::optional(static_cast<std::size_t>(key)) : std::nullopt;
}

} // namespace

CreatedProfile createProfileData(
    const ProfileControls& controls, const ProfileOrigin& origin, std::span<std::byte> list)
{
    const Address address = chooseAddress(controls, origin, list);
    Profile profile;
    profile.set(ProfileKey::profileName, controls.ProfileName);
    profile.set(ProfileKey::acPowerCam, controls.CamWhenAcPower);
    profile.set(ProfileKey::authenticationType, controls.AuthenType);
    profile.set(ProfileKey::channel, controls.Channel);
    profile.set(ProfileKey::encryptionType, controls.EncryType);
    profile.set(ProfileKey::fragmentationThreshold, controls.FragThresholdText);
    profile.set(ProfileKey::networkType, controls.NetworkType);
    profile.set(ProfileKey::preambleType, controls.PreambleType);
    profile.set(ProfileKey::powerSaveMode, controls.PSMode);
    profile.set(ProfileKey::rtsThreshold, controls.RtsThresholdText);
    profile.set(ProfileKey::ssid, controls.SSID);
    profile.set(ProfileKey::txPower, controls.TxPower);
    profile.set(ProfileKey::bssid, address.bssid);
    profile.set(ProfileKey::hidden, address.hidden ? 1 : 0);
    setKeys(profile, controls);
    return { profile, address.hidden };
}

KeyControls keyControlsOf(const ProfileControls& controls)
{
    return { controls.AuthenType, controls.EncryType, wepKeyControlsOf(controls.wepKeys),
        keyBytesOf(controls.WPAPreSharedKey) };
}

std::optional<std::array<WepKey, wepKeyCount>> convertedKeys(const ProfileControls& controls)
{
    // With WPA index 1 means AES. The keys are converted then too, but not used.
    if (controls.AuthenType != 1 && controls.EncryType != 1)
        return std::nullopt;
    std::array<WepKey, wepKeyCount> keys;
    const auto rows = wepKeyControlsOf(controls.wepKeys);
    std::transform(rows.begin(), rows.end(), keys.begin(),
        [](const WepKeyControls& key) { return wepKeyOf(key.formatIndex, key.text.view()); });
    return keys;
}

EditedProfile editedProfile(const Profile& profile)
{
    EditedProfile values;
    values.ProfileName = profile.text(ProfileKey::profileName);
    values.CamWhenAcPower = profile.integer(ProfileKey::acPowerCam);
    values.NetworkType = profile.integer(ProfileKey::networkType);
    values.AuthenType = profile.integer(ProfileKey::authenticationType);
    values.Channel = channelIndexOf(profile.integer(ProfileKey::channel));
    values.EncryType = profile.integer(ProfileKey::encryptionType);
    values.PreambleType = profile.integer(ProfileKey::preambleType);
    values.PSMode = profile.integer(ProfileKey::powerSaveMode) != 0;
    values.TxPower = profile.integer(ProfileKey::txPower);
    values.SSID = profile.text(ProfileKey::ssid);
    for (std::size_t i = 0; i < values.keyTexts.size(); ++i) {
        values.keyFormats[i] = profile.integer(ProfileKey::wepKeyType(i));
        values.keyTexts[i] = profile.text(ProfileKey::wepKey(i));
    }
    values.transmitKey = transmitKeyOf(profile);
    values.WPAPreSharedKey = profile.text(ProfileKey::wpaPsk);
    if (values.NetworkType != Ndis802_11IBSS)
        values.copyBSSID = addressOf(profile.text(ProfileKey::bssid));
    values.bHidden = profile.integer(ProfileKey::hidden) != 0;
    return values;
}

AuthenticationChoice authenticationChoiceOf(std::int32_t authenticationMode)
{
    if (authenticationMode == Ndis802_11AuthModeShared)
        return { 1, false };
    if (authenticationMode == Ndis802_11AuthModeWPA || authenticationMode == Ndis802_11AuthModeWPAPSK)
        return { wpaAuthenTypeIndex, true };
    return { 0, false };
}

int encryptionIndexOf(std::int32_t encryptionStatus, int authenTypeIndex)
{
    const std::int32_t second
        = authenTypeIndex == wpaAuthenTypeIndex ? Ndis802_11Encryption3Enabled : Ndis802_11Encryption1Enabled;
    return encryptionStatus == second ? 1 : 0;
}
