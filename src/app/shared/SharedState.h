#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>

// Process-wide state shared by the pages. Main thread only; initialised statically and never reset as a whole. Byte
// flags are 0 (false) or 1 (true).

extern std::uint8_t __DEBUG__; // NOLINT(bugprone-reserved-identifier): debug traces to standard error; 0 as shipped

extern std::uint8_t G_bDeviceExist; // the driver's service could be found and opened when the watch last searched
extern std::uint8_t G_bDialogRunning; // the supported bands are being queried; the device watch pauses
extern std::uint8_t G_bSelCard; // the adapter is selected for use; always 1
extern std::uint8_t G_bDeviceRemove; // the adapter is considered removed; never read
// The list is to be shown again at the next probe: it is fresh, or lacks the link's access point.
extern std::uint8_t G_bRescan;
extern std::uint8_t G_bBssidListScan; // reserved
extern std::uint8_t G_bSupportAMode; // the card supports 802.11a (5 GHz)
extern std::uint8_t G_bRadio; // the radio is switched on
extern std::int32_t G_bOidSetRetry; // retry count of set requests; never read: requests are not repeated
extern std::uint8_t G_bWpaCapable; // reserved
extern std::uint8_t G_bCheckedProfileConnect; // the link is up, configured from a profile
extern std::uint8_t G_configFromProfile; // the driver was last configured from a profile, not from the site survey
extern std::int32_t G_enumWirelessMode; // wireless mode last chosen, a value of VX_OID_802_11_PHY_MODE
extern std::int32_t G_encryCapa; // encryption offered by the security sheets: 4 TKIP, 6 TKIP and AES
// The row of the access point list marked as connected: 0 at the start, -1 if a probe found none. It wraps: a network at
// index 128 to 255 marks no row, one at index 256 marks row 0.
extern std::int8_t G_bCurSelItem;

// An NDIS_802_11_BSSID_LIST, zero-filled after its last entry, so that a walk ends at an entry of length zero.
using BssidListBuffer = std::array<std::byte, 65536>;
extern std::unique_ptr<BssidListBuffer> G_pBssidList; // null until the first query; every query replaces it
