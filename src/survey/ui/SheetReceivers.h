#pragma once

#include "survey/ConnectionRecord.h"

#include <string>

// Where the sheets of the site survey hand back what was typed.

class SecuritySettingsReceiver {
public:
    virtual ~SecuritySettingsReceiver() = default;
    virtual void ReceiveWEPsetting(const SecuritySettings& settings) = 0;
};

class HiddenSSIDReceiver {
public:
    virtual ~HiddenSSIDReceiver() = default;
    // The bytes of the name, at most 32; none for an empty name.
    virtual void ReceiveHiddenSSID(const std::string& HiddenSSIDtext) = 0;
};
