#include "survey/ConnectionRecord.h"

#include "survey/keys/KeyRecords.h"

#include <span>

namespace {

constexpr std::int32_t preambleSetting = 2;
constexpr std::uint32_t rtsThresholdOff = 2347; // bytes; one more than the maximum frame size of IEEE 802.11

void applyPresharedKey(PROFILE_DATA& record, const NetworkChoice& choice, const SecuritySettings& security)
{
    // The security sheet does not pass on the length of the text, so every text is taken as a passphrase. If the
    // derivation refuses it, as it does 64 hexadecimal digits, the text's first 32 bytes become the key.
    const PresharedKey refused = pskFromBytes(security.WPAPSK);
    // The length is the driver's and may be invalid.
    const bool validName = choice.ssid.SsidLength <= NetworkName::maxLength;
    record.pWpaKey
        = wpaKeyRecord(validName ? derivePsk(security.WPAPSK, NetworkName::fromRecord(choice.ssid), refused) : refused);
    record.AuthenMode = choice.network.InfrastructureMode != Ndis802_11Infrastructure ? Ndis802_11AuthModeWPANone
                                                                                      : Ndis802_11AuthModeWPAPSK;
    record.EncryStatus = security.EncryType != 0 ? Ndis802_11Encryption3Enabled : Ndis802_11Encryption2Enabled;
}

void applyWepKeys(PROFILE_DATA& record, const SecuritySettings& security)
{
    record.AuthenMode = security.AuthenType;
    record.EncryStatus = security.EncryType != 0 ? Ndis802_11Encryption1Enabled : Ndis802_11EncryptionDisabled;
    for (std::uint32_t index = 0; index < record.pWepKey.size(); ++index) {
        const WepKey& key = security.WepKeys[index];
        if (key.length == 0)
            continue;
        const bool transmitKey = static_cast<std::int32_t>(index) == security.SelKeyIndex;
        record.pWepKey[index] = wepKeyRecord(index, transmitKey, std::span(key.material).first(key.length));
    }
}

void applySecurity(PROFILE_DATA& record, const NetworkChoice& choice, const SecuritySettings& security)
{
    if (security.AuthenType >= wpaAuthenTypeIndex)
        applyPresharedKey(record, choice, security);
    else if (security.AuthenType == 1 || security.EncryType == 1)
        applyWepKeys(record, security);
}

} // namespace

bool isHiddenNetwork(const WLAN_BSSID_EX& network)
{
    return network.InfrastructureMode == Ndis802_11Infrastructure && network.Ssid.SsidLength == 0;
}

bool needsSecuritySettings(const NetworkChoice& choice)
{
    return choice.network.Privacy != 0 || usesPresharedKey(choice.wpaClass);
}

std::unique_ptr<PROFILE_DATA> connectionRecord(const NetworkChoice& choice, const SecuritySettings* security)
{
    auto record = std::make_unique<PROFILE_DATA>();
    record->RtsThreshold = rtsThresholdOff;
    record->PreambleType = preambleSetting;
    record->NetworkType = choice.network.InfrastructureMode;
    record->AuthenMode = Ndis802_11AuthModeOpen;
    record->EncryStatus = Ndis802_11EncryptionDisabled;
    if (security)
        applySecurity(*record, choice, *security);
    record->DisassociateFirst = 1;

    if (choice.network.InfrastructureMode == Ndis802_11IBSS || choice.hidden) {
        record->Ssid = choice.ssid;
    } else {
        record->Bssid = choice.network.MacAddress;
        record->ConnectByBssid = 1;
    }
    return record;
}
