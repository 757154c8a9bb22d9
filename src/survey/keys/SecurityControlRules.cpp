#include "survey/keys/SecurityControlRules.h"

#include "survey/keys/KeyRules.h"

namespace {

constexpr int tkipOnly = 4;
constexpr int tkipAndAes = 6;

} // namespace

std::optional<std::vector<QString>> authenticationItems(int kind)
{
    if (kind != 0 && kind != 1)
        return std::nullopt;
    return std::vector { QStringLiteral("Open"), QStringLiteral("Shared"),
        kind == 0 ? QStringLiteral("WPA-NONE") : QStringLiteral("WPA-PSK") };
}

std::vector<QString> encryptionItems(int authenTypeIndex, int encryptionCapability)
{
    if (authenTypeIndex == 0 || authenTypeIndex == 1)
        return { QStringLiteral("NONE"), QStringLiteral("WEP") };
    if (authenTypeIndex != wpaAuthenTypeIndex)
        return {};
    if (encryptionCapability == tkipOnly)
        return { QStringLiteral("TKIP") };
    if (encryptionCapability == tkipAndAes)
        return { QStringLiteral("TKIP"), QStringLiteral("AES") };
    return {};
}

std::optional<KeyFieldsEnabled> keyFieldsEnabled(int authenTypeIndex, int encryTypeIndex)
{
    if (authenTypeIndex == 0 && encryTypeIndex == 0)
        return KeyFieldsEnabled { false, false };
    // Shared authentication needs the WEP keys even where the data is not encrypted.
    if ((authenTypeIndex == 0 && encryTypeIndex == 1)
        || (authenTypeIndex == 1 && (encryTypeIndex == 0 || encryTypeIndex == 1)))
        return KeyFieldsEnabled { true, false };
    if (authenTypeIndex == wpaAuthenTypeIndex)
        return KeyFieldsEnabled { false, true };
    return std::nullopt;
}
