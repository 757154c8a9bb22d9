#include "driver/ListedName.h"

#include <cstddef>

NetworkName listedName(const BssidEntry& entry)
{
    return NetworkName::upToZero(entry.bytesUpToZero(offsetof(WLAN_BSSID_EX, Ssid.Ssid)));
}
