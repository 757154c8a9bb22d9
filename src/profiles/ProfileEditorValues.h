#pragma once

#include "driver/records/NdisRecords.h"
#include "profiles/ProfileKeys.h"
#include "survey/keys/KeyRules.h"

#include <QString>

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

// Between the profile editor's controls and a profile, as functions over values.

// The controls' values when the editor is confirmed. A box without a selection has index -1.
struct ProfileControls {
    QString ProfileName;
    int CamWhenAcPower { 0 }; // state
    int AuthenType { 0 }; // index
    QString Channel; // the selected item's text
    int EncryType { 0 }; // index
    QString FragThresholdText;
    int NetworkType { 0 }; // index
    int PreambleType { 0 }; // index
    int PSMode { 0 }; // state
    QString RtsThresholdText;
    QString SSID; // the text
    int ssidIndex { -1 }; // the item selected in the SSID list
    QString ssidItem; // the text of that item
    int TxPower { 0 }; // index
    std::array<WepKeyRow, 4> wepKeys;
    QString WPAPreSharedKey;
};

// What the editor carries besides its controls.
struct ProfileOrigin {
    bool IsNewData { true };
    MacAddress copyBSSID {};
    bool bHidden { false };
};

struct CreatedProfile {
    Profile profile;
    bool bHidden { false }; // for the editor to keep
};

// The profile of these controls. list is the scan result: a new profile whose name is the selected item of the SSID
// list has the address of that entry (none when the list has no such entry any more); one whose name was typed
// belongs to a hidden network, if it is an infrastructure network.
[[nodiscard]] CreatedProfile createProfileData(
    const ProfileControls& controls, const ProfileOrigin& origin, std::span<std::byte> list);

// The values that are checked before (keyRefusal).
[[nodiscard]] KeyControls keyControlsOf(const ProfileControls& controls);

// The bytes of the four keys, as the editor keeps them; nothing where they stay as they were.
[[nodiscard]] std::optional<std::array<WepKey, 4>> convertedKeys(const ProfileControls& controls);

// What the controls show of a stored profile. An index may be one that the box does not have.
struct EditedProfile {
    QString ProfileName;
    int CamWhenAcPower { 0 };
    int NetworkType { 0 };
    int AuthenType { 0 };
    int Channel { -1 }; // index
    int EncryType { 0 };
    int PreambleType { 0 };
    bool PSMode { false }; // otherwise CAM
    int TxPower { 0 };
    QString SSID; // for ssidOfEditedProfile
    std::array<int, 4> keyFormats {};
    std::array<QString, 4> keyTexts;
    std::optional<std::size_t> transmitKey; // nothing: the radio buttons stay as they are
    QString WPAPreSharedKey;
    std::optional<MacAddress> copyBSSID; // nothing for ad hoc profiles: it stays as it was
    bool bHidden { false };
};

[[nodiscard]] EditedProfile editedProfile(const Profile& profile);

// The item of AuthenType for a network's authentication mode, and whether the list is that of infrastructure networks
// from now on. WPA-None, of which ad hoc networks are, has no item: it counts as "Open".
struct AuthenticationChoice {
    int index { 0 };
    bool infrastructureList { false };
    bool operator==(const AuthenticationChoice&) const = default;
};
[[nodiscard]] AuthenticationChoice authenticationChoiceOf(std::int32_t authenticationMode);

// The item of EncryType for a network's encryption status, with that item of AuthenType.
[[nodiscard]] int encryptionIndexOf(std::int32_t encryptionStatus, int authenTypeIndex);
