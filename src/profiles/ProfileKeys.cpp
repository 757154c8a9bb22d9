#include "profiles/ProfileKeys.h"

namespace ProfileKey {

QString wepKey(std::size_t index)
{
    return QStringLiteral("WEPKey%1").arg(index + 1);
}

QString wepKeyType(std::size_t index)
{
    return wepKey(index) + QStringLiteral(" Type");
}

const std::vector<QString>& inOrder()
{
    static const std::vector<QString> keys { profileName, acPowerCam, authenticationType, channel, encryptionType,
        fragmentationThreshold, networkType, preambleType, powerSaveMode, rtsThreshold, ssid, txPower, bssid, hidden,
        wepKey(0), wepKeyType(0), wepKey(1), wepKeyType(1), wepKey(2), wepKeyType(2), wepKey(3), wepKeyType(3),
        wepKeyUse, wpaPsk };
    return keys;
}

const std::vector<QString>& ofActivationInOrder()
{
    static const std::vector<QString> keys { profileName, acPowerCam, authenticationType, channel, encryptionType,
        fragmentationThreshold, networkType, preambleType, powerSaveMode, rtsThreshold, ssid, bssid, txPower, wepKey(0),
        wepKeyType(0), wepKey(1), wepKeyType(1), wepKey(2), wepKeyType(2), wepKey(3), wepKeyType(3), wepKeyUse, wpaPsk,
        hidden };
    return keys;
}

} // namespace ProfileKey
