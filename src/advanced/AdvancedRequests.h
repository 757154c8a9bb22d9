#pragma once

#include "advanced/AdvancedSettings.h"

class AssertionHandler;
class VX7100Access;

// What the advanced settings page sends to the driver. The results of the requests are not looked at.

// Gives the driver G_enumWirelessMode where it has another. The traces name the newly selected mode beside the two.
void sendWirelessMode(VX7100Access& adapter, const AdvancedSettings& settings);
// Puts the options into the driver's station configuration and sends it where that changed it. What the options do not
// name keeps what the driver had.
void sendStationConfiguration(VX7100Access& adapter, const AdvancedSettings& settings);
// False, with nothing sent, where a failed assertion ends the operation.
[[nodiscard]] bool sendDesiredRates(
    VX7100Access& adapter, const AdvancedSettings& settings, AssertionHandler& assertions);
// Switches the radio to what G_bRadio says.
void sendRadio(VX7100Access& adapter);
