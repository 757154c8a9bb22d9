#include "survey/keys/KeyRules.h"

#include "crypto/HexDigits.h"
#include "platform/ByteText.h"

#include <algorithm>
#include <cstddef>

namespace {

constexpr int sharedIndex = 1;
constexpr int wepIndex = 1;
constexpr int hexadecimalIndex = 0;
constexpr int asciiIndex = 1;

std::string_view upToZero(std::string_view text)
{
    return text.substr(0, text.find('\0'));
}

bool isHexadecimal(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char character) { return BtoH(character) != 0xFF; });
}

bool hasKeyLength(const WepKeyControls& key)
{
    const std::size_t length = upToZero(key.text.view()).size();
    if (key.formatIndex == hexadecimalIndex)
        return length == 10 || length == 26;
    if (key.formatIndex == asciiIndex)
        return length == 5 || length == 13;
    return true;
}

QString wepRefusal(const WepKeyControls& key, std::size_t index)
{
    const QString title = key.formatIndex == hexadecimalIndex
        ? QStringLiteral("Invalid WEP key %1 length. WEP should be 10 or 26 hexadecimal digits.")
        : QStringLiteral("Invalid WEP key %1 length. WEP should be 5 or 13 ASCII characters.");
    return title.arg(index + 1);
}

// The selected key is checked first; it is the only one that must not be empty.
std::optional<std::size_t> firstInvalidKey(const std::array<WepKeyControls, wepKeyCount>& keys)
{
    const auto selected = static_cast<std::size_t>(selectedKeyIndex(keys));
    if (!hasKeyLength(keys[selected]))
        return selected;
    for (std::size_t i = 0; i < keys.size(); ++i)
        if (!upToZero(keys[i].text.view()).empty() && !hasKeyLength(keys[i]))
            return i;
    return std::nullopt;
}

// No maximum length: the derivation refuses a text that is too long.
std::optional<QString> presharedKeyRefusal(std::string_view text)
{
    if (text.size() < minPassphraseLength)
        return QStringLiteral("Invalid WPA Pre-Shared key. WPA-PSK used field should use more 8 characters.");
    if (text.size() == presharedKeyDigits && !isHexadecimal(text))
        return QStringLiteral("Invalid WPA Pre-Shared key. WPA-PSK used field should use more 64 hexadecimal digital.");
    return std::nullopt;
}

} // namespace

SecretText keyBytesOf(const QString& text)
{
    QByteArray bytes = bytesFromText(text);
    SecretText key(std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
    secureClear(bytes.data(), static_cast<std::size_t>(bytes.size()));
    return key;
}

std::array<WepKeyControls, wepKeyCount> wepKeyControlsOf(const std::array<WepKeyRow, wepKeyCount>& rows)
{
    std::array<WepKeyControls, wepKeyCount> keys;
    std::transform(rows.begin(), rows.end(), keys.begin(), [](const WepKeyRow& row) {
        return WepKeyControls { row.format, keyBytesOf(row.text), row.radioOn };
    });
    return keys;
}

std::optional<QString> keyRefusal(const KeyControls& controls)
{
    if (controls.authenTypeIndex >= wpaAuthenTypeIndex)
        return presharedKeyRefusal(upToZero(controls.WPAPSK.view()));
    const auto key = refusedWepKey(controls);
    return key ? std::optional(wepRefusal(controls.wepKeys[*key], *key)) : std::nullopt;
}

std::optional<std::size_t> refusedWepKey(const KeyControls& controls)
{
    const bool inUse = usesWepKeys(controls.authenTypeIndex, controls.encryTypeIndex);
    return inUse ? firstInvalidKey(controls.wepKeys) : std::nullopt;
}

bool usesWepKeys(int authenTypeIndex, int encryTypeIndex)
{
    return authenTypeIndex < wpaAuthenTypeIndex && (authenTypeIndex == sharedIndex || encryTypeIndex == wepIndex);
}

std::int32_t selectedKeyIndex(const std::array<WepKeyControls, wepKeyCount>& keys)
{
    for (std::size_t i = 0; i < keys.size(); ++i)
        if (keys[i].radioOn)
            return static_cast<std::int32_t>(i);
    return 0;
}

WepKey wepKeyOf(int formatIndex, std::string_view text)
{
    text = upToZero(text);
    const bool hexadecimal = formatIndex == hexadecimalIndex;
    WepKey key;
    key.length = static_cast<std::uint8_t>(std::min(hexadecimal ? text.size() / 2 : text.size(), maxWepKeySize));
    if (hexadecimal)
        AtoH(text, key.material.data(), key.length);
    else
        std::copy_n(text.begin(), key.length, key.material.begin());
    return key;
}
