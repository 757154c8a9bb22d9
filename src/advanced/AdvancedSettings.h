#pragma once

#include "platform/store/PropertyDictionary.h"

#include <QString>

#include <cstdint>

// The radio settings that the page exchanges with its controls, the driver and the settings file.
struct AdvancedSettings {
    std::int32_t nTxRate { 0 }; // index in the rate list of the wireless mode; 0 is automatic
    std::int32_t nWirelessMode { 0 }; // 0 to 3, as last loaded or applied
    std::int32_t nBGProtection { 0 }; // the driver's UseBGProtection
    bool bTurboRate { false }; // sent, but has no control
    bool bTXBurst { false };
    bool bShortSlot { false }; // sent, but has no control
    bool bAdhocOfdm { false };

    bool operator==(const AdvancedSettings&) const = default;
};

// The settings file in a home directory.
[[nodiscard]] QString advancedSettingsPath(const QString& homePath);

// Reads the five stored settings; missing keys read as 0. The two settings that are not stored do not change.
void readSettings(const PropertyDictionary& record, AdvancedSettings& settings);
// The five stored settings as decimal texts.
[[nodiscard]] PropertyDictionary settingsRecord(const AdvancedSettings& settings);

// The first part of Apply: stores the selections of the two lists, resets settings that do not fit the mode, and sets
// G_enumWirelessMode to the mode for the driver. All checks use the mode of the last load or Apply. The newly selected
// mode is stored after them, so the driver gets it only at the next Apply or card insertion.
void applySelections(std::int32_t rateIndex, std::int32_t modeIndex, AdvancedSettings& settings);
