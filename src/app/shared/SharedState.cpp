#include "app/shared/SharedState.h"

std::uint8_t __DEBUG__ = 0; // NOLINT(bugprone-reserved-identifier)

std::uint8_t G_bDeviceExist = 0;
std::uint8_t G_bDialogRunning = 0;
std::uint8_t G_bSelCard = 1;
std::uint8_t G_bDeviceRemove = 1;
std::uint8_t G_bRescan = 0;
std::uint8_t G_bBssidListScan = 0;
std::uint8_t G_bSupportAMode = 0;
std::uint8_t G_bRadio = 1;
std::int32_t G_bOidSetRetry = 3;
std::uint8_t G_bWpaCapable = 1;
std::uint8_t G_bCheckedProfileConnect = 0;
std::uint8_t G_configFromProfile = 0;
std::int32_t G_enumWirelessMode = 0;
std::int32_t G_encryCapa = 6;
std::int8_t G_bCurSelItem = 0;

std::unique_ptr<BssidListBuffer> G_pBssidList;
