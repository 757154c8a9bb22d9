#pragma once

#include "advanced/AdvancedSettings.h"

#include <optional>

class AssertionHandler;
class VX7100Access;

// The requests of the advanced settings page. A failed request does not stop the following ones.

// Sends G_enumWirelessMode to the driver if the driver's mode differs. The trace also contains the newly selected mode.
void sendWirelessMode(VX7100Access& adapter, const AdvancedSettings& settings);
// Updates the driver's station configuration with the settings and sends it if it changed. Other fields keep the
// driver's values. Returns whether the card's own radio switch is on, std::nullopt if the driver did not answer.
std::optional<bool> sendStationConfiguration(VX7100Access& adapter, const AdvancedSettings& settings);
// Returns false and sends nothing if a failed assertion ends the operation.
[[nodiscard]] bool sendDesiredRates(
    VX7100Access& adapter, const AdvancedSettings& settings, AssertionHandler& assertions);
// Switches the radio on or off according to G_bRadio.
void sendRadio(VX7100Access& adapter);
