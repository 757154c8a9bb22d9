#pragma once

#include <QString>

#include <optional>
#include <vector>

// The rules for the controls of the security sheet and the profile editor, as functions over control values.

// The authentication list. Its third item is "WPA-NONE" for kind 0 (ad hoc) and "WPA-PSK" for kind 1 (infrastructure).
// Returns std::nullopt for any other kind: the list does not change.
[[nodiscard]] std::optional<std::vector<QString>> authenticationItems(int kind);

// The encryption list of a sheet.
struct EncryptionList {
    std::vector<QString> items;
    int selectedIndex { -1 }; // -1 for none
    int selFlag { 0 }; // 1 after WPA was selected as the authentication, 0 after "Open" or "Shared"
    bool operator==(const EncryptionList&) const = default;
};

// The list after the authentication was selected; selFlag is the new value. A changed selFlag empties the list first.
// Otherwise, as between "Open" and "Shared", the items are inserted again in front of the current ones and the selected
// index keeps its number. No selected authentication inserts nothing.
[[nodiscard]] EncryptionList encryptionListAfter(
    EncryptionList list, int authenTypeIndex, int selFlag, int encryptionCapability);

// Which key fields are enabled.
struct KeyFieldsEnabled {
    bool wepKeys { false }; // radio button, format and text of each key
    bool presharedKey { false };
    bool operator==(const KeyFieldsEnabled&) const = default;
};

// Returns std::nullopt if the fields do not change.
[[nodiscard]] std::optional<KeyFieldsEnabled> keyFieldsEnabled(int authenTypeIndex, int encryTypeIndex);
