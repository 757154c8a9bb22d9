#include "profiles/ProfileConnection.h"

#include "driver/records/ChannelTable.h"
#include "platform/NetworkName.h"
#include "survey/keys/KeyRecords.h"
#include "survey/keys/KeyRules.h"

#include <span>

namespace {

const auto yes = QStringLiteral("YES");
const auto no = QStringLiteral("NO");

NetworkName nameOf(const Profile& profile)
{
    return NetworkName::fromText(profile.text(ProfileKey::ssid));
}

// All zeros if the derivation refuses the passphrase.
PresharedKey presharedKey(const Profile& profile)
{
    const SecretText WPAPSK = keyBytesOf(profile.text(ProfileKey::wpaPsk));
    return WPAPSK.size() == presharedKeyDigits ? pskFromDigits(WPAPSK) : derivePsk(WPAPSK, nameOf(profile));
}

void applyWpa(PROFILE_DATA& record, const Profile& profile)
{
    record.AuthenMode
        = record.NetworkType == Ndis802_11Infrastructure ? Ndis802_11AuthModeWPAPSK : Ndis802_11AuthModeWPANone;
    record.EncryStatus = profile.integer(ProfileKey::encryptionType) == 0 ? Ndis802_11Encryption2Enabled
                                                                          : Ndis802_11Encryption3Enabled;
    record.pWpaKey = wpaKeyRecord(presharedKey(profile));
}

void applyWep(PROFILE_DATA& record, const Profile& profile)
{
    record.AuthenMode = profile.integer(ProfileKey::authenticationType);
    record.EncryStatus = profile.integer(ProfileKey::encryptionType) == 0 ? Ndis802_11EncryptionDisabled
                                                                          : Ndis802_11Encryption1Enabled;
    const int transmitKey = profile.integer(ProfileKey::wepKeyUse);
    for (std::uint32_t i = 0; i < record.pWepKey.size(); ++i) {
        const SecretText text = keyBytesOf(profile.text(ProfileKey::wepKey(i)));
        const WepKey key = wepKeyOf(profile.integer(ProfileKey::wepKeyType(i)), text.view());
        if (key.length > 0)
            record.pWepKey[i]
                = wepKeyRecord(i, transmitKey == static_cast<int>(i), std::span(key.material).first(key.length));
    }
}

void applySecurity(PROFILE_DATA& record, const Profile& profile)
{
    const int authentication = profile.integer(ProfileKey::authenticationType);
    if (authentication > 1) {
        applyWpa(record, profile);
    } else if (authentication == 1 || profile.integer(ProfileKey::encryptionType) == 1) {
        applyWep(record, profile);
    } else {
        record.AuthenMode = Ndis802_11AuthModeOpen;
        record.EncryStatus = Ndis802_11EncryptionDisabled;
    }
}

std::uint32_t frequencyKhzOf(int channel)
{
    if (channel < 1 || channel > G_nChanFreqCount)
        return 0;
    return ChannelFreqTable[static_cast<std::size_t>(channel - 1)].frequencyKhz;
}

Profile entryOf(const QString& flag, int row, const Profile& profile, bool withHidden)
{
    Profile entry;
    entry.set(ProfileKey::activeProfileFlag, flag);
    entry.set(ProfileKey::selected, row);
    for (const QString& key : ProfileKey::ofActivationInOrder())
        if (withHidden || key != ProfileKey::hidden)
            entry.set(key, profile.text(key));
    return entry;
}

} // namespace

std::unique_ptr<PROFILE_DATA> profileConnection(const Profile& profile)
{
    auto record = std::make_unique<PROFILE_DATA>();
    record->Ssid = nameOf(profile).record();
    record->NetworkType = profile.integer(ProfileKey::networkType);
    record->PreambleType = profile.integer(ProfileKey::preambleType);
    record->RtsThreshold = static_cast<std::uint32_t>(profile.integer(ProfileKey::rtsThreshold));
    record->FragmentThreshold = static_cast<std::uint32_t>(profile.integer(ProfileKey::fragmentationThreshold));
    applySecurity(*record, profile);
    record->TxPower = static_cast<std::uint32_t>(profile.integer(ProfileKey::txPower));
    record->PowerSaveMode = profile.integer(ProfileKey::powerSaveMode);
    record->CamWhenAcPower = static_cast<std::uint8_t>(profile.integer(ProfileKey::acPowerCam));
    if (record->NetworkType == Ndis802_11IBSS)
        record->ChannelFreq = frequencyKhzOf(profile.integer(ProfileKey::channel));
    record->DisassociateFirst = 1;
    return record;
}

Profile activeEntry(const Profile& profile, int row)
{
    return entryOf(yes, row, profile, true);
}

Profile inactiveEntry(const Profile& entry, int row)
{
    return entryOf(no, row, entry, false);
}

bool isActiveEntry(const Profile& entry)
{
    return entry.text(ProfileKey::activeProfileFlag) == yes;
}
