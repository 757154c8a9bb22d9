#include "survey/keys/SecurityControlRules.h"

#include "survey/keys/KeyRules.h"

namespace {

constexpr int tkipOnly = 4;
constexpr int tkipAndAes = 6;

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

} // namespace

std::optional<std::vector<QString>> authenticationItems(int kind)
{
    if (kind != 0 && kind != 1)
        return std::nullopt;
    return std::vector { QStringLiteral("Open"), QStringLiteral("Shared"),
        kind == 0 ? QStringLiteral("WPA-NONE") : QStringLiteral("WPA-PSK") };
}

EncryptionList encryptionListAfter(EncryptionList list, int authenTypeIndex, int selFlag, int encryptionCapability)
{
    const bool otherFamily = selFlag != list.selFlag;
    if (otherFamily)
        list.items.clear();
    const auto inserted = encryptionItems(authenTypeIndex, encryptionCapability);
    list.items.insert(list.items.begin(), inserted.begin(), inserted.end());
    if (otherFamily) {
        list.selectedIndex = list.items.empty() ? -1 : 0;
        list.selFlag = selFlag;
    }
    return list;
}

std::optional<KeyFieldsEnabled> keyFieldsEnabled(int authenTypeIndex, int encryTypeIndex)
{
    if (authenTypeIndex == 0 && encryTypeIndex == 0)
        return KeyFieldsEnabled { false, false };
    // Shared authentication needs the WEP keys even if the data is not encrypted.
    if ((authenTypeIndex == 0 && encryTypeIndex == 1)
        || (authenTypeIndex == 1 && (encryTypeIndex == 0 || encryTypeIndex == 1)))
        return KeyFieldsEnabled { true, false };
    if (authenTypeIndex == wpaAuthenTypeIndex)
        return KeyFieldsEnabled { false, true };
    return std::nullopt;
}
