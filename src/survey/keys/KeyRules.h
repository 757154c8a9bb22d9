#pragma once

#include <QString>

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Which keys may be used, and the bytes that a key's text stands for: for the security sheet and the profile editor,
// as functions over the values of their controls. Texts are their byte form, of which nothing behind a zero byte
// counts; lengths are in bytes.

inline constexpr std::int32_t wpaAuthenTypeIndex = 2; // "WPA-PSK" or "WPA-NONE" in the security sheet

// A key's row of controls, with the text as it was typed: what is kept.
struct WepKeyRow {
    int format { 0 }; // WEPKeyNCombo: 0 hexadecimal, 1 ASCII
    QString text; // WEPKeyNText
    bool radioOn { false }; // WEPKeyNRadio
};

// The row as it is checked and converted.
struct WepKeyControls {
    int formatIndex { 0 }; // 0 hexadecimal, 1 ASCII, anything else: none selected
    std::string text;
    bool radioOn { false }; // the transmit key
};

struct KeyControls {
    int authenTypeIndex { 0 }; // 0 "Open", 1 "Shared", 2 "WPA-PSK" or "WPA-NONE"
    int encryTypeIndex { 0 }; // 0 "NONE", 1 "WEP"; with WPA 0 "TKIP", 1 "AES"
    std::array<WepKeyControls, 4> wepKeys;
    std::string presharedKey; // passphrase, or 64 hexadecimal digits
};

// The byte form of a typed text, as it is read from a profile (platform/NetworkName.h): what is counted and checked is
// what is used later.
[[nodiscard]] std::string keyBytesOf(const QString& text);
[[nodiscard]] std::array<WepKeyControls, 4> wepKeyControlsOf(const std::array<WepKeyRow, 4>& rows);

// The title of the alert about the first rule that the keys break; nothing when they may be used. WEP keys are held to
// their lengths alone, and a pre-shared key may be longer than any that can be used: neither is looked into here.
[[nodiscard]] std::optional<QString> keyRefusal(const KeyControls& controls);

// Whether WEP keys are in use, and their texts are to be converted: with "Shared", or with "WEP" for "Open".
[[nodiscard]] bool usesWepKeys(int authenTypeIndex, int encryTypeIndex);

// The transmit key, 0 to 3: the first whose radio button is on; 0 when none is.
[[nodiscard]] std::int32_t selectedKeyIndex(const std::array<WepKeyControls, 4>& keys);

struct WepKey {
    std::uint8_t length { 0 }; // bytes, 0 to 13; 0 for a key that is not set
    std::array<std::uint8_t, 14> material {}; // the key and a terminating zero; zeros behind it
    bool operator==(const WepKey&) const = default;
};

// The bytes of a key's text: its characters, or half as many bytes where the format is hexadecimal. A digit that is
// none is converted all the same (crypto/HexDigits.h). Of a text that is too long, the first 13 bytes.
[[nodiscard]] WepKey wepKeyOf(int formatIndex, std::string_view text);
