#pragma once

#include "platform/store/PropertyDictionary.h"

#include <QString>

#include <cstddef>
#include <vector>

// A connection profile: texts under fixed keys. A missing key reads as an empty text and as 0.
using Profile = PropertyDictionary;
using ProfileList = std::vector<Profile>;

namespace ProfileKey {

inline const QString profileName = QStringLiteral("Profile Name");
inline const QString acPowerCam = QStringLiteral("AC Power CAM"); // 0 or 1
inline const QString authenticationType = QStringLiteral("Authentication Type"); // 0 open, 1 shared, 2 WPA
inline const QString channel = QStringLiteral("Channel"); // a number; used in ad hoc mode only
inline const QString encryptionType = QStringLiteral("Encryption Type"); // 0 none, 1 WEP; with WPA 0 TKIP, 1 AES
inline const QString fragmentationThreshold = QStringLiteral("Fragmentation Threshold"); // bytes
inline const QString networkType = QStringLiteral("Network Type"); // 0 ad hoc, 1 infrastructure
inline const QString preambleType = QStringLiteral("Preamble Type");
inline const QString powerSaveMode = QStringLiteral("Power Save Mode"); // 0 or 1
inline const QString rtsThreshold = QStringLiteral("RTS Threshold"); // bytes
inline const QString ssid = QStringLiteral("SSID"); // NetworkName::text()
inline const QString txPower = QStringLiteral("Tx Power"); // 0 to 4 for 100, 75, 50, 25 and 12 percent
inline const QString bssid = QStringLiteral("BSSID"); // twelve hexadecimal digits, or empty
inline const QString hidden = QStringLiteral("Hidden"); // 1: the network does not broadcast its name
inline const QString wepKeyUse = QStringLiteral("WEPKeyUse"); // the transmit key, 0 to 3
inline const QString wpaPsk = QStringLiteral("WPAPSK"); // a passphrase, or 64 hexadecimal digits

[[nodiscard]] QString wepKey(std::size_t index); // "WEPKey1" for 0
[[nodiscard]] QString wepKeyType(std::size_t index); // "WEPKey1 Type" for 0: a format, 0 hexadecimal, 1 ASCII

// All keys of a profile in the order of the file.
[[nodiscard]] const std::vector<QString>& inOrder();

// The same keys in the order of the active profile's entry.
[[nodiscard]] const std::vector<QString>& ofActivationInOrder();

// The additional keys of the active profile's entry.
inline const QString activeProfileFlag = QStringLiteral("Active Profile Flag"); // "YES" or "NO"
inline const QString selected = QStringLiteral("Selected"); // the profile's row when the entry was written

} // namespace ProfileKey
