#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>

// The process-wide flags that the pages share instead of passing state through objects. Plain memory, main thread
// only, initialised before main runs and never reset as a whole. Byte flags hold 0 (false) or 1 (true).

extern std::uint8_t __DEBUG__; // NOLINT(bugprone-reserved-identifier): debug traces to standard error; 0 as shipped

extern std::uint8_t G_bDeviceExist; // the driver's service was found at the last device check
extern std::uint8_t G_bDialogRunning; // a card initialisation is in progress: the device watch does nothing
extern std::uint8_t G_bSelCard; // the adapter is selected for use; always 1
extern std::uint8_t G_bDeviceRemove; // the adapter is considered removed
extern std::uint8_t G_bRescan; // a fresh BSSID list has been fetched and not yet taken up
extern std::uint8_t G_bBssidListScan; // reserved
extern std::uint8_t G_bSupportAMode; // the card supports 802.11a (5 GHz)
extern std::uint8_t G_bRadio; // the radio is switched on
extern std::int32_t G_bOidSetRetry; // retry count for set requests; no request is ever repeated, nothing reads it
extern std::uint8_t G_bWpaCapable; // reserved
extern std::uint8_t G_bCheckedProfileConnect; // the link is up with a configuration that came from a profile
extern std::uint8_t G_configFromProfile; // the driver's configuration came from a profile, not from the site survey
extern std::int32_t G_enumWirelessMode; // wireless mode last chosen, a value of VX_OID_802_11_PHY_MODE
extern std::int32_t G_encryCapa; // encryption capability of the security sheets: 4 TKIP only, 6 TKIP and AES
extern std::int8_t G_bCurSelItem; // row of the access point list marked as connected; -1 (byte 255) for none

// One NDIS_802_11_BSSID_LIST, zero beyond its last entry, so that the word after it reads as a zero length.
using BssidListBuffer = std::array<std::byte, 65536>;
extern std::unique_ptr<BssidListBuffer> G_pBssidList; // null until the first query of the list; replaced as a whole
