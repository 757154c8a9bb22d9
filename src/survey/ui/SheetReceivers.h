#pragma once

#include "platform/NetworkName.h"
#include "survey/ConnectionRecord.h"

// The interfaces through which the sheets of the site survey return what the user entered.

class SecuritySettingsReceiver {
public:
    virtual ~SecuritySettingsReceiver() = default;
    // The settings contain keys; do not keep copies.
    virtual void ReceiveWEPsetting(const SecuritySettings& settings) = 0;
};

class HiddenSSIDReceiver {
public:
    virtual ~HiddenSSIDReceiver() = default;
    // At most NetworkName::maxLength bytes; may be empty.
    virtual void ReceiveHiddenSSID(const NetworkName& HiddenSSIDtext) = 0;
};
