#pragma once

#include "app/shared/CardPresence.h"
#include "app/shared/SharedState.h"

#include <QtGlobal>

// Resets the shared flags to their initial values, before and after the test.
class InitialSharedState {
public:
    InitialSharedState() { set(); }
    ~InitialSharedState() { set(); }
    Q_DISABLE_COPY_MOVE(InitialSharedState)

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
        cardPresence = CardPresence::Unknown;
        cardSwitchOn.reset();
        radioSwitched = false;
    }
};
