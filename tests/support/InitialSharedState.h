#pragma once

#include "app/shared/SharedState.h"

// The shared flags as they are when the program starts, at the beginning and at the end of a test that has one of these.
class InitialSharedState {
public:
    InitialSharedState() { set(); }
    ~InitialSharedState() { set(); }
    InitialSharedState(const InitialSharedState&) = delete;
    InitialSharedState& operator=(const InitialSharedState&) = delete;

private:
    static void set()
    {
        __DEBUG__ = 0;
        G_bDeviceExist = 0;
        G_bDialogRunning = 0;
        G_bSelCard = 1;
        G_bDeviceRemove = 1;
        G_bRescan = 0;
        G_bBssidListScan = 0;
        G_bSupportAMode = 0;
        G_bRadio = 1;
        G_bOidSetRetry = 3;
        G_bWpaCapable = 1;
        G_bCheckedProfileConnect = 0;
        G_configFromProfile = 0;
        G_enumWirelessMode = 0;
        G_encryCapa = 6;
        G_bCurSelItem = 0;
        G_pBssidList.reset();
    }
};
