#pragma once

#include <QString>

#include <optional>
#include <vector>

// What the controls of the security sheet and of the profile editor offer, as functions over control values.

// The third item is WPA in either list: "WPA-NONE" for ad hoc networks (kind 0), "WPA-PSK" for infrastructure (kind 1).
// Nothing for another kind: the list stays as it is.
[[nodiscard]] std::optional<std::vector<QString>> authenticationItems(int kind);

// What a change of the authentication puts in front of the encryption list. The items are put there whether or not the
// list was emptied before, so a change between "Open" and "Shared" shows them twice.
[[nodiscard]] std::vector<QString> encryptionItems(int authenTypeIndex, int encryptionCapability);

// Which key fields can be typed in.
struct KeyFieldsEnabled {
    bool wepKeys { false }; // of each key: radio button, format and text
    bool presharedKey { false };
    bool operator==(const KeyFieldsEnabled&) const = default;
};

// Nothing where the fields stay as they are.
[[nodiscard]] std::optional<KeyFieldsEnabled> keyFieldsEnabled(int authenTypeIndex, int encryTypeIndex);
