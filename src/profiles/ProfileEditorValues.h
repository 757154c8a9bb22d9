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

// Converts between the profile editor's controls and a profile.

// The values of the controls when the user presses OK. The index is -1 without a selection.
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
    std::array<WepKeyRow, wepKeyCount> wepKeys;
    QString WPAPreSharedKey;
};

// The state of the editor that is not in its controls.
struct ProfileOrigin {
    bool IsNewData { true };
    MacAddress copyBSSID {};
    bool bHidden { false };
};

struct CreatedProfile {
    Profile profile;
    bool bHidden { false }; // the new state of the editor
};

// Makes a profile from the controls. list is the scan result. If the name of a new profile is the selected item of the SSID
// list, the profile gets the address of that entry, or no address if the entry has disappeared. A new infrastructure
// profile with a typed name belongs to a hidden network.
[[nodiscard]] CreatedProfile createProfileData(
    const ProfileControls& controls, const ProfileOrigin& origin, std::span<std::byte> list);

// The values to check first (keyRefusal).
[[nodiscard]] KeyControls keyControlsOf(const ProfileControls& controls);

// The bytes of the four keys, which the editor keeps; std::nullopt if they do not change.
[[nodiscard]] std::optional<std::array<WepKey, wepKeyCount>> convertedKeys(const ProfileControls& controls);

// The values of the controls for a stored profile. An index may be out of range.
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
    std::array<int, wepKeyCount> keyFormats {};
    std::array<QString, wepKeyCount> keyTexts;
    std::optional<std::size_t> transmitKey; // std::nullopt: the radio buttons do not change
    QString WPAPreSharedKey;
    std::optional<MacAddress> copyBSSID; // std::nullopt for ad hoc profiles: it does not change
    bool bHidden { false };
};

[[nodiscard]] EditedProfile editedProfile(const Profile& profile);

// The item of AuthenType for a network's authentication mode, and whether the list changes to that of infrastructure
// networks. WPA-None, which ad hoc networks use, counts as "Open".
struct AuthenticationChoice {
    int index { 0 };
    bool infrastructureList { false };
    bool operator==(const AuthenticationChoice&) const = default;
};
[[nodiscard]] AuthenticationChoice authenticationChoiceOf(std::int32_t authenticationMode);

// The item of EncryType for a network's encryption status, with the given item of AuthenType.
[[nodiscard]] int encryptionIndexOf(std::int32_t encryptionStatus, int authenTypeIndex);
