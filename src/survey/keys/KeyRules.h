#pragma once

#include "posix/SecureMemory.h"

#include <QString>

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

// Key validation and conversion for the security sheet and the profile editor, as functions over the values of their
// controls. Key texts are bytes and end at the first zero byte; lengths are in bytes.

inline constexpr std::int32_t wpaAuthenTypeIndex = 2; // "WPA-PSK" or "WPA-NONE"

inline constexpr std::size_t minPassphraseLength = 8;
inline constexpr std::size_t maxPassphraseLength = 63;
inline constexpr std::size_t presharedKeyDigits = 64; // a text of this length is the key itself

inline constexpr std::size_t wepKeyCount = 4;
inline constexpr std::size_t maxWepKeySize = 13; // bytes

// The controls of one WEP key, as a profile stores them.
struct WepKeyRow {
    int format { 0 }; // WEPKeyNCombo: 0 hexadecimal, 1 ASCII
    QString text; // WEPKeyNText
    bool radioOn { false }; // WEPKeyNRadio
};

// The same controls for checking and conversion.
struct WepKeyControls {
    int formatIndex { 0 }; // 0 hexadecimal, 1 ASCII, any other: none selected
    SecretText text;
    bool radioOn { false }; // the transmit key
};

struct KeyControls {
    int authenTypeIndex { 0 }; // 0 "Open", 1 "Shared", 2 "WPA-PSK" or "WPA-NONE"
    int encryTypeIndex { 0 }; // 0 "NONE", 1 "WEP"; with WPA 0 "TKIP", 1 "AES"
    std::array<WepKeyControls, wepKeyCount> wepKeys;
    SecretText WPAPSK; // passphrase, or 64 hexadecimal digits
};

// The bytes of a typed or stored key text (platform/ByteText.h).
[[nodiscard]] SecretText keyBytesOf(const QString& text);
[[nodiscard]] std::array<WepKeyControls, wepKeyCount> wepKeyControlsOf(const std::array<WepKeyRow, wepKeyCount>& rows);

// The title of the alert for the first rule that the keys break; std::nullopt if they are accepted. Only the length of
// a WEP key is checked. A pre-shared key has no maximum length here: the derivation refuses a text that is too long.
[[nodiscard]] std::optional<QString> keyRefusal(const KeyControls& controls);

// The WEP key that keyRefusal refuses, 0 to 3; std::nullopt if it refuses the pre-shared key or nothing.
[[nodiscard]] std::optional<std::size_t> refusedWepKey(const KeyControls& controls);

// Whether WEP keys are in use and their texts are converted: with "Shared", and with "WEP" for "Open".
[[nodiscard]] bool usesWepKeys(int authenTypeIndex, int encryTypeIndex);

// The transmit key, 0 to 3: the first whose radio button is on, or 0.
[[nodiscard]] std::int32_t selectedKeyIndex(const std::array<WepKeyControls, wepKeyCount>& keys);

struct WepKey {
    std::uint8_t length { 0 }; // bytes, 0 to maxWepKeySize; 0 if not set
    SecretArray<std::uint8_t, maxWepKeySize + 1> material {}; // zero-terminated and zero-filled
    bool operator==(const WepKey&) const = default;
};

// Converts a key text to bytes: one byte per character, or per two digits if the format is hexadecimal. Invalid hex
// digits are converted without an error (crypto/HexDigits.h). A text that is too long is truncated to 13 bytes.
[[nodiscard]] WepKey wepKeyOf(int formatIndex, std::string_view text);
